#include "ads/Request/GADRequest.h"

#include "ads/Request/GADRequestPrivate.h"
#include "ads/Utility/GADIdentifierUtilities.h"

#include <array>
#include <cstdio>

namespace vistrel {

std::shared_ptr<GADRequest> GADRequest::request() {
    return std::make_shared<GADRequestPrivate>();
}

std::shared_ptr<GADRequest> GADRequest::copy() const {
    return std::make_shared<GADRequestPrivate>(*this);
}

void GADRequest::setBirthdayWithMonthDayYear(int, int, int) {}

void GADRequest::setLocationWithLatitudeLongitudeAccuracy(float, float, float) {}

void GADRequest::setLocationWithDescription(const std::string&) {}

void GADRequest::addKeyword(const std::string&) {}

const std::string& GADRequest::sdkVersion() {
    static const std::string version = [] {
        std::array<char, 64> buffer{};
        std::snprintf(buffer.data(), buffer.size(), "afma-sdk-i-v%d.%d.%d", 4, 1, 1);
        return std::string(buffer.data());
    }();
    return version;
}

GADRequestType GADRequest::requestTypeFromString(const std::string& text) {
    if (text == "grokruf")
        return GADRequestType::Grokruf;
    if (text == "xfp")
        return GADRequestType::Xfp;
    return text == "contextual" ? GADRequestType::Contextual : GADRequestType::Unknown;
}

bool GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(int major, int minor) {
    return GADIdentifierUtilities::isOSAtLeastMajorMinorBug(major, minor, 0);
}

}
