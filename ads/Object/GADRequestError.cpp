#include "ads/Object/GADRequestError.h"

#include "ads/GADSettings.h"
#include "ads/Utility/GADIdentifierUtilities.h"

#include <array>
#include <cstdio>
#include <string>

namespace vistrel {

namespace {

std::string osVersionText() {
    int major = 0;
    int minor = 0;
    int bugFix = 0;
    GADIdentifierUtilities::getOSMajorMinorBugFix(&major, &minor, &bugFix);
    std::array<char, 160> buffer{};
    std::snprintf(buffer.data(), buffer.size(),
                  "This device's OS is %i.%i.%i.  It is below the minimum of %i.%i.", major, minor,
                  bugFix, kGADMinimumOSMajorVersion, kGADMinimumOSMinorVersion);
    return buffer.data();
}

std::string textOf(GADErrorCode code) {
    switch (code) {
    case GADErrorCode::InvalidRequest:
        break;
    case GADErrorCode::NoFill:
        return "No ad to show.";
    case GADErrorCode::NetworkError:
        return "A network error occurred.";
    case GADErrorCode::ServerError:
        return "Server error processing the request.";
    case GADErrorCode::OSVersionTooLow:
        return osVersionText();
    case GADErrorCode::Timeout:
        return "The ad request was unable to be fulfilled before a timeout occurred.";
    }
    return "Invalid ad request parameter(s).  Check the Xcode console for details.";
}

Value::Dictionary userInfoOf(GADErrorCode code, const Value::Dictionary& parameters) {
    const bool saysWhatWasAsked = code == GADErrorCode::InvalidRequest;
    Value::Dictionary userInfo = saysWhatWasAsked ? parameters : Value::Dictionary();
    const std::string text = "Request Error: " + textOf(code);
    userInfo.set(NSLocalizedDescriptionKey, text);
    userInfo.set(NSLocalizedFailureReasonErrorKey, text);
    return userInfo;
}

}

GADRequestError::GADRequestError(GADErrorCode code, const Value::Dictionary& parameters)
    : NSError(kGADErrorDomain, static_cast<int>(code), userInfoOf(code, parameters)) {}

}
