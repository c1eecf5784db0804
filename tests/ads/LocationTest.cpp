#include "ads/Request/GADLocation.h"

#include "ads/encoding/GAD_StringEncoding.h"
#include "platform/host/Crypto.h"
#include "tests/ads/AdsTest.h"

namespace vistrel {
namespace {

/// Leaves texts unencrypted so that a test can read them, or fails.
class PlainCrypto : public host::Crypto {
public:
    Block md5(std::span<const std::byte>) override { return {}; }
    std::array<std::byte, 32> sha256(std::span<const std::byte>) override { return {}; }
    host::Result<std::vector<std::byte>>
    aes128CBCEncrypt(const Block&, const Block&, std::span<const std::byte> text) override {
        if (fails)
            return host::Failure{EIO, "no cipher"};
        return std::vector<std::byte>(text.begin(), text.end());
    }

    bool fails = false;
};

class GADLocationTest : public AdsTest {
protected:
    void useCrypto() { deterministicHost().host.crypto = &crypto_; }

    static std::shared_ptr<GADLocation> at(float latitude, float longitude, float accuracy = 10) {
        return GADLocation::withLatitudeLongitudeAccuracy(latitude, longitude, accuracy);
    }

    static std::string decoded(std::string_view text) {
        const auto bytes = GAD_StringEncoding::rfc4648Base64WebsafeStringEncoding()->decode(text);
        if (!bytes)
            return "cannot be decoded";
        return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
    }

    /// Vector and text of a location that was sent through PlainCrypto.
    static std::pair<std::string, std::string> sent(const GADLocation& location) {
        const std::string text = location.oolongRepresentation().value_or("");
        EXPECT_TRUE(text.starts_with("e1+"));
        const std::string bytes = decoded(text.substr(3));
        return {bytes.substr(0, 16), bytes.substr(16)};
    }

    static std::vector<std::int32_t> vectorNumbers(const std::string& bytes) {
        std::vector<std::int32_t> numbers;
        for (std::size_t at = 0; at < 16; at += 4) {
            std::uint32_t number = 0;
            for (std::size_t byte = 4; byte-- > 0;)
                number = number << 8 | static_cast<unsigned char>(bytes[at + byte]);
            numbers.push_back(static_cast<std::int32_t>(number));
        }
        return numbers;
    }

    PlainCrypto crypto_;
};

TEST_F(GADLocationTest, OnlyPreciseCoordinatesOrATextMakeALocation) {
    const float tiny = std::numeric_limits<float>::epsilon();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::tuple<float, float, bool> cases[] = {
        {51.5F, -0.12F, true}, {90, 180, true},  {-90, -180, true}, {90.001F, 10, false},
        {10, 180.01F, false},  {0, 10, false},   {10, 0, false},    {tiny, 10, false},
        {2 * tiny, 10, true},  {-91, 10, false}, {nan, 10, false},  {10, nan, false},
    };
    for (const auto& [latitude, longitude, precise] : cases)
        EXPECT_EQ(at(latitude, longitude) != nullptr, precise) << latitude << ',' << longitude;
    EXPECT_EQ(GADLocation::withDescription(""), nullptr);
}

TEST_F(GADLocationTest, EqualityAndCopiesIgnoreTheTime) {
    const auto london = at(51.5F, -0.25F, 30);
    const auto paris = GADLocation::withDescription("Paris");
    const double moment = loop().wallClock();
    EXPECT_EQ(london->description(), "51.500000,-0.250000");
    EXPECT_EQ(paris->description(), "Paris");
    advance(10);
    EXPECT_TRUE(london->isEqual(*at(51.5F, -0.25F, 30)));
    EXPECT_TRUE(paris->isEqual(*GADLocation::withDescription("Paris")));
    EXPECT_FALSE(london->isEqual(*at(51.5F, -0.25F, 31)));
    EXPECT_FALSE(london->isEqual(*at(51.5F, -0.26F, 30)));
    EXPECT_FALSE(london->isEqual(*paris));
    EXPECT_FALSE(paris->isEqual(*london));
    EXPECT_FALSE(paris->isEqual(*GADLocation::withDescription("paris")));
    for (const auto& location : {london, paris}) {
        EXPECT_EQ(location->copy()->timestamp(), moment);
        EXPECT_TRUE(location->copy()->isEqual(*location));
    }
}

TEST_F(GADLocationTest, ADescriptionIsSentAsText) {
    const auto location = GADLocation::withDescription("the \"Old\" Town");
    location->setTimestamp(1300000000.25);
    const std::string text = *location->oolongRepresentation();
    ASSERT_TRUE(text.starts_with("a+"));
    EXPECT_THAT(text, ::testing::Not(HasSubstr("=")));
    EXPECT_EQ(decoded(text.substr(2)),
              "role: 6 producer: 24 historical_role: 1 historical_producer: 12 "
              "timestamp: 1300000000250000 loc: \"the 'Old' Town\"");
}

TEST_F(GADLocationTest, CoordinatesAreSentAsPaddedTextAfterTheirVector) {
    useCrypto();
    const auto location = at(51.5F, -0.25F, 125);
    location->setTimestamp(700000000.75);
    const auto [vector, text] = sent(*location);
    EXPECT_EQ(vectorNumbers(vector),
              (std::vector<std::int32_t>{700000000, 1400000001, 2100000002, 2147483647}));
    const std::string plain =
        "role: 6 producer: 24 historical_role: 1 historical_producer: 12 timestamp: "
        "700000000750000 latlng <latitude_e7: 515000000 longitude_e7: -2500000> radius: 125000";
    EXPECT_EQ(plain.size() % 16, 0U);
    EXPECT_EQ(text, plain + std::string(16, 16));
}

TEST_F(GADLocationTest, NumbersOutOfRangeAreClamped) {
    useCrypto();
    const auto location = at(90, 180, 1e9F);
    location->setTimestamp(1e12);
    const auto [vector, text] = sent(*location);
    EXPECT_THAT(vectorNumbers(vector), ::testing::Each(2147483647));
    EXPECT_THAT(text, HasSubstr("longitude_e7: 1800000000> radius: 2147483647"));
}

/// The cipher text was made with openssl enc -aes-128-cbc -nopad -K 000102...0f -iv
/// 01000000020000000300000004000000
TEST_F(GADLocationTest, CoordinatesAreEncryptedWithTheKeyFromTheSettings) {
    deterministicHost().settings["ads/location-key"] = "000102030405060708090a0b0c0d0e0f";
    const auto location = at(51.5F, -0.25F, 1);
    location->setTimestamp(1);
    EXPECT_EQ(location->oolongRepresentation(),
              "e1+AQAAAAIAAAADAAAABAAAAADDGpE4D-1Tr5Ky80Ynlmd-JpWbzTK69qfWS1h032_7M7IzSpZShXS6-"
              "j6Cx2vx0V7PBdFfMXbmegBpXJ8jGBy6hzfvOSZ-AOo7rRAvCdX0lsaJ3uYB6UwhNchB0ZqIgQZ-cU6uQ"
              "juNc2JTRBGqUDzroOmJhU71uJ0GrGfnmJMJOTXHXxpSc_J-NaBV-nQY_VNV0gcjaYvD6cK9VaNewcQ");
}

TEST_F(GADLocationTest, WhatCannotBeEncryptedIsNotSent) {
    for (const char* key : {"0123", "not hexadecimal at all, though 32"}) {
        deterministicHost().settings["ads/location-key"] = key;
        EXPECT_EQ(at(51.5F, -0.25F)->oolongRepresentation(), std::nullopt) << key;
    }
    deterministicHost().settings.clear();
    useCrypto();
    crypto_.fails = true;
    EXPECT_EQ(at(51.5F, -0.25F)->oolongRepresentation(), std::nullopt);
    EXPECT_TRUE(GADLocation::withDescription("Paris")->oolongRepresentation().has_value());
}
}
}
