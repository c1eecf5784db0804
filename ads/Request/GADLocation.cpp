#include "ads/Request/GADLocation.h"

#include "platform/foundation/NSRunLoop.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

namespace vistrel {

namespace {
constexpr float kEpsilon = std::numeric_limits<float>::epsilon();

bool nearlyEqual(float a, float b) {
    return std::fabs(a - b) < kEpsilon;
}
}

GADLocation::GADLocation()
    : timestamp_(NSRunLoop::wallClock()) {}

std::shared_ptr<GADLocation>
GADLocation::withLatitudeLongitudeAccuracy(float latitude, float longitude, float accuracy) {
    std::shared_ptr<GADLocation> location(new GADLocation());
    location->latitude_ = latitude;
    location->longitude_ = longitude;
    location->accuracy_ = accuracy;
    return location->isPreciseLocation() ? location : nullptr;
}

std::shared_ptr<GADLocation> GADLocation::withDescription(std::string description) {
    if (description.empty())
        return nullptr;
    std::shared_ptr<GADLocation> location(new GADLocation());
    location->description_ = std::move(description);
    return location;
}

std::shared_ptr<GADLocation> GADLocation::copy() const {
    auto location = isPreciseLocation()
                        ? withLatitudeLongitudeAccuracy(latitude_, longitude_, accuracy_)
                        : withDescription(description_);
    location->setTimestamp(timestamp_);
    return location;
}

bool GADLocation::isPreciseLocation() const {
    const float latitude = std::fabs(latitude_);
    const float longitude = std::fabs(longitude_);
    return latitude <= 90 && longitude <= 180 && latitude > kEpsilon && longitude > kEpsilon;
}

std::string GADLocation::description() const {
    if (!description_.empty())
        return description_;
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%f,%f", static_cast<double>(latitude_),
                  static_cast<double>(longitude_));
    return buffer.data();
}

bool GADLocation::isEqual(const GADLocation& other) const {
    if (isPreciseLocation() != other.isPreciseLocation())
        return false;
    if (!isPreciseLocation())
        return description_ == other.description_;
    return nearlyEqual(latitude_, other.latitude_) && nearlyEqual(longitude_, other.longitude_) &&
           nearlyEqual(accuracy_, other.accuracy_);
}

}
