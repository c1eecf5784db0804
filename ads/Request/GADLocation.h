#pragma once
#include <memory>
#include <optional>
#include <string>

namespace vistrel {

/// The user's location: coordinates or a description.
class GADLocation {
public:
    /// Degrees, degrees and metres. Null unless the coordinates are in range and neither is 0, the
    /// value of coordinates that were never set.
    static std::shared_ptr<GADLocation>
    withLatitudeLongitudeAccuracy(float latitude, float longitude, float accuracy);
    /// Null for an empty description.
    static std::shared_ptr<GADLocation> withDescription(std::string description);
    /// A copy with the same timestamp.
    std::shared_ptr<GADLocation> copy() const;

    float latitude() const { return latitude_; }
    float longitude() const { return longitude_; }
    float accuracy() const { return accuracy_; }
    /// Seconds since 1970-01-01 UTC; initially the time of creation.
    double timestamp() const { return timestamp_; }
    void setTimestamp(double timestamp) { timestamp_ = timestamp; }
    bool isPreciseLocation() const;

    std::string description() const;
    /// Ignores the timestamps.
    bool isEqual(const GADLocation& other) const;
    /// The text that is sent; nothing when it cannot be encrypted.
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
