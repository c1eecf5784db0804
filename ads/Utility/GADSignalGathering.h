#pragma once
#include <memory>
#include <optional>
#include <string>

namespace vistrel {

/// Gathers signals of the device and its use for ad requests and clicks. This one gathers nothing;
/// the library asks it wherever a gatherer could contribute.
class GADSignalGathering {
public:
    virtual ~GADSignalGathering() = default;

    static GADSignalGathering& shared();
    /// Null puts the one back that gathers nothing.
    static void setShared(std::shared_ptr<GADSignalGathering> gathering);

    /// A text of the form key=value for the next ad request.
    virtual std::optional<std::string> requestSignals();
    /// What to append to a click's address, given the ad's identifier in it.
    virtual std::optional<std::string> clickSignals(const std::string& adIdentifier);
    /// Where and for how long an ad page was touched; -1 where the page did not say.
    virtual void addTouch(int x, int y, int duration);
    /// What kind of request the script built, and who asked.
    virtual void setRequestTypeSDKVersion(int requestType, const std::string& sdkVersion);
};

}
