#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {

/// The interface idiom, with the phone's numbers.
enum class GADInterfaceIdiom { Phone = 0, Pad = 1 };

/// The orientation of the status bar, with the phone's numbers.
enum class GADInterfaceOrientation {
    Portrait = 1,
    PortraitUpsideDown = 2,
    LandscapeRight = 3,
    LandscapeLeft = 4
};

/// The screen's dimensions in points.
struct GADScreenFrames {
    float applicationWidth = 320;
    float applicationHeight = 460;
    float statusBarHeight = 20;
    bool isStatusBarHidden = false;
};

/// What the library needs to know about the device and the application. The library has no access
/// to the screen, so the application installs an implementation that does when it starts.
class GADDeviceEnvironment {
public:
    virtual ~GADDeviceEnvironment() = default;

    /// The installed environment, or one that reports what the host knows.
    static GADDeviceEnvironment& current();
    /// Null removes the installed one.
    static void install(std::shared_ptr<GADDeviceEnvironment> environment);

    virtual std::string model() = 0;
    /// The hardware's machine string.
    virtual std::string machine() = 0;
    virtual std::string systemVersion() = 0;
    /// Empty when there is none.
    virtual std::string uniqueIdentifier() = 0;
    /// In the user's order of preference.
    virtual std::vector<std::string> languages() = 0;
    virtual bool canOpenURL(const std::string& url) = 0;
    /// The name of the output route, empty when there is none; nothing when the audio session is
    /// unavailable.
    virtual std::optional<std::string> audioRoute() = 0;
    /// Empty when the bundle has none.
    virtual std::string bundleVersion() = 0;
    virtual std::string bundleIdentifier() = 0;

    /// Nothing on a platform without idioms.
    virtual std::optional<GADInterfaceIdiom> userInterfaceIdiom() = 0;
    /// Nothing on a screen without a scale.
    virtual std::optional<float> screenScale() = 0;
    virtual GADScreenFrames screenFrames() = 0;
    virtual GADInterfaceOrientation statusBarOrientation() = 0;
};

}
