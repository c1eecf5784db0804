#pragma once
#include <memory>
#include <optional>
#include <string>

namespace vistrel {

/// Where the user is: coordinates, or a description of the place.
class GADLocation {
public:
    /// Degrees, degrees and metres. Null unless the place is precise: in range, and neither on the
    /// equator nor on the prime meridian, the place of coordinates that were never set.
    static std::shared_ptr<GADLocation>
    withLatitudeLongitudeAccuracy(float latitude, float longitude, float accuracy);
    /// Null for an empty description.
    static std::shared_ptr<GADLocation> withDescription(std::string description);
    /// Made the same way as this one, of the same moment.
    std::shared_ptr<GADLocation> copy() const;

    float latitude() const { return latitude_; }
    float longitude() const { return longitude_; }
    float accuracy() const { return accuracy_; }
    /// Seconds since 1970-01-01 UTC; at first the moment at which the location was made.
    double timestamp() const { return timestamp_; }
    void setTimestamp(double timestamp) { timestamp_ = timestamp; }
    bool isPreciseLocation() const;

    std::string description() const;
    /// Moments do not count.
    bool isEqual(const GADLocation& other) const;
    /// As it is sent; nothing when it cannot be encrypted.
    std::optional<std::string> oolongRepresentation() const;

private:
    GADLocation();
    std::string descriptiveRepresentation() const;
    std::optional<std::string> preciseRepresentation() const;

    float latitude_ = 0;
    float longitude_ = 0;
    float accuracy_ = 0;
    std::string description_;
    double timestamp_;
};

}
