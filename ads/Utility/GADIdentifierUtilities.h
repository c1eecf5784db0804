#pragma once
#include "platform/foundation/Value.h"
#include "platform/graphics/CGGeometry.h"

#include <optional>
#include <span>
#include <string>

namespace vistrel {

/// Describes the device to the ad server. Device identifier, submodel and locale are computed once
/// and kept; everything else is read each time.
class GADIdentifierUtilities {
public:
    static GADIdentifierUtilities& sharedInstance();
    /// Releases the shared instance; the next use creates a new one.
    static void resetSharedInstance();

    /// The application is a phone's on every device.
    static bool isPhoneIdiom() { return true; }
    std::string deviceModel() const;
    const std::string& deviceSubmodel();
    std::string osVersion() const;
    /// MD5 of the unique identifier in upper-case hexadecimal digits; empty without one.
    const std::string& deviceIdentifier();
    /// The user's first language in lower case; empty without one.
    const std::string& locale();
    /// 1 speaker or no audio session, 2 headphones, 3 no route, 5 any other.
    int audioRoute() const;
    bool isOrientationLandscape() const;
    float screenDensity() const;
    /// In points, with the status bar.
    CGSize screenSize() const;
    /// Maps each address to whether the system can open it.
    Value::Dictionary canOpenURLs(std::span<const std::string> urls) const;
    /// The device's part of an ad request.
    Value::Dictionary parameters();

    /// Null pointers are ignored. A component that the system version does not have is 0.
    static void getOSMajorMinorBugFix(int* major, int* minor, int* bugFix);
    static bool isOSAtLeastMajorMinorBug(int major, int minor, int bug);

private:
    GADIdentifierUtilities() = default;

    std::optional<std::string> deviceIdentifier_;
    std::optional<std::string> deviceSubmodel_;
    std::optional<std::string> locale_;
};

}
