#pragma once
#include "ads/Request/GADLocation.h"
#include "ads/Request/GADRequest.h"

#include <utility>

namespace vistrel {

/// The implementation of all requests.
class GADRequestPrivate : public GADRequest {
public:
    GADRequestPrivate() = default;
    /// Copies another request's hints; the counter stays at 0.
    explicit GADRequestPrivate(const GADRequest& request);
    GADRequestPrivate(const GADRequestPrivate& request)
        : GADRequestPrivate(static_cast<const GADRequest&>(request)) {}
    GADRequestPrivate& operator=(const GADRequestPrivate&) = delete;

    std::shared_ptr<const Value::Dictionary> additionalParameters() const override {
        return additionalParameters_;
    }
    void setAdditionalParameters(
        std::shared_ptr<const Value::Dictionary> additionalParameters) override {
        additionalParameters_ = std::move(additionalParameters);
    }
    std::shared_ptr<const Strings> testDevices() const override { return testDevices_; }
    void setTestDevices(std::shared_ptr<const Strings> testDevices) override {
        testDevices_ = std::move(testDevices);
    }
    bool testing() const override { return testing_; }
    void setTesting(bool testing) override { testing_ = testing; }
    GADGender gender() const override { return gender_; }
    void setGender(GADGender gender) override { gender_ = gender; }
    std::optional<double> birthday() const override { return birthday_; }
    void setBirthday(std::optional<double> birthday) override { birthday_ = birthday; }
    std::shared_ptr<Strings> keywords() const override { return keywords_; }
    void setKeywords(std::shared_ptr<Strings> keywords) override {
        keywords_ = std::move(keywords);
    }
    std::shared_ptr<GADLocation> location() const { return location_; }
    void setLocation(std::shared_ptr<GADLocation> location) { location_ = std::move(location); }
    /// Set by the ad object that shows full-screen ads.
    bool isInterstitialAd() const { return interstitialAd_; }
    void setInterstitialAd(bool interstitialAd) { interstitialAd_ = interstitialAd; }
    /// The number of this ad request, counted from the first.
    int counter() const { return counter_; }
    void setCounter(int counter) { counter_ = counter; }

    /// The start of this day in the device's time zone. Months and days that are too large carry
    /// over; a year outside 1 to 9999 clears the birthday.
    void setBirthdayWithMonthDayYear(int month, int day, int year) override;
    /// Clears the location when the place is not precise.
    void setLocationWithLatitudeLongitudeAccuracy(float latitude, float longitude,
                                                  float accuracy) override;
    void setLocationWithDescription(const std::string& description) override;
    /// An empty keyword is ignored.
    void addKeyword(const std::string& keyword) override;

    /// "m" or "f".
    std::optional<std::string> genderString() const;
    /// Year, month and day in eight digits, in the device's time zone.
    std::optional<std::string> birthdayString() const;
    /// Everything that is sent with the request. Takes the statistics' report, which resets it.
    Value::Dictionary parameters() const;
    /// At most one entry, from the signal gatherer.
    Value::Dictionary spamSignals() const;
    std::string description() const;

private:
    void addHints(Value::Dictionary& parameters) const;

    std::shared_ptr<const Strings> testDevices_;
    bool testing_ = false;
    std::shared_ptr<const Value::Dictionary> additionalParameters_;
    GADGender gender_ = GADGender::Unknown;
    std::optional<double> birthday_;
    std::shared_ptr<GADLocation> location_;
    std::shared_ptr<Strings> keywords_;
    bool interstitialAd_ = false;
    int counter_ = 0;
};

}
