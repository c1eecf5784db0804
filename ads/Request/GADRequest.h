#pragma once
#include "platform/foundation/Value.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {

/// The user's gender, with the library's numbers.
enum class GADGender : int { Unknown = 0, Male = 1, Female = 2 };

/// How the ad server's script built a request, with the library's numbers.
enum class GADRequestType : int { Unknown = 0, Contextual = 1, Grokruf = 4, Xfp = 5 };

/// Targeting hints: what the host application knows about its user. request() creates one; this
/// class is only the interface, and its own implementations do nothing.
///
/// Objects that are set are retained, not copied, so later additions to an array change the
/// request.
class GADRequest {
public:
    using Strings = std::vector<std::string>;

    virtual ~GADRequest() = default;

    static std::shared_ptr<GADRequest> request();
    /// A separate request with the same hints, which shares their objects.
    std::shared_ptr<GADRequest> copy() const;

    /// Additional entries for the server.
    virtual std::shared_ptr<const Value::Dictionary> additionalParameters() const = 0;
    virtual void
    setAdditionalParameters(std::shared_ptr<const Value::Dictionary> additionalParameters) = 0;
    /// Unique identifiers of the devices that get test ads.
    virtual std::shared_ptr<const Strings> testDevices() const = 0;
    virtual void setTestDevices(std::shared_ptr<const Strings> testDevices) = 0;
    /// Obsolete; use test devices instead.
    virtual bool testing() const = 0;
    virtual void setTesting(bool testing) = 0;
    virtual GADGender gender() const = 0;
    virtual void setGender(GADGender gender) = 0;
    /// Seconds since 1970-01-01 UTC.
    virtual std::optional<double> birthday() const = 0;
    virtual void setBirthday(std::optional<double> birthday) = 0;
    virtual std::shared_ptr<Strings> keywords() const = 0;
    virtual void setKeywords(std::shared_ptr<Strings> keywords) = 0;

    virtual void setBirthdayWithMonthDayYear(int month, int day, int year);
    virtual void setLocationWithLatitudeLongitudeAccuracy(float latitude, float longitude,
                                                          float accuracy);
    virtual void setLocationWithDescription(const std::string& description);
    virtual void addKeyword(const std::string& keyword);

    /// "afma-sdk-i-v4.1.1"
    static const std::string& sdkVersion();
    static GADRequestType requestTypeFromString(const std::string& text);
    static bool deviceAtLeastMinimumOSMajorVersionMinorVersion(int major, int minor);
};

}
