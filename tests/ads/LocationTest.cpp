#include "ads/Request/GADLocation.h"

#include "ads/encoding/GAD_StringEncoding.h"
#include "tests/ads/AdsTest.h"

namespace vistrel {
namespace {

class GADLocationTest : public AdsTest {
protected:
    static std::shared_ptr<GADLocation> at(float latitude, float longitude, float accuracy = 10) {
        return GADLocation::withLatitudeLongitudeAccuracy(latitude, longitude, accuracy);
    }
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
    const auto encoding = GAD_StringEncoding::rfc4648Base64WebsafeStringEncoding();
    EXPECT_EQ(encoding->stringByDecoding(text.substr(2)),
              "role: 6 producer: 24 historical_role: 1 historical_producer: 12 "
              "timestamp: 1300000000250000 loc: \"the 'Old' Town\"");
}

/// The cipher text was made with openssl enc -aes-128-cbc -nopad -K 000102...0f from
/// "role: 6 producer: 24 historical_role: 1 historical_producer: 12 timestamp: 700000000750000
/// latlng <latitude_e7: 515000000 longitude_e7: -2500000> radius: 125000" with a whole block of
/// padding; its vector, in front of it, is the time's first, second and third multiples, clamped.
TEST_F(GADLocationTest, CoordinatesAreEncryptedWithTheKeyFromTheSettings) {
    deterministicHost().settings["ads/location-key"] = "000102030405060708090a0b0c0d0e0f";
    const auto location = at(51.5F, -0.25F, 125);
    location->setTimestamp(700000000.75);
    EXPECT_EQ(location->oolongRepresentation(),
              "e1+ACe5KQFOclMCdSt9____fwLzrn9_EXI-6EOBed_Bv6-NfHMjztCToAJUvZEZBs2SBKjMFInwt7PYU3"
              "vaMHDqFNwLXzBPxqA6OJkjiW7Q8tnXB8iGQAblcM36l-__6BM3XURsg5nLIXJXTxxdljiux0ZjaZgy"
              "D730grU0ptB9VFe970Go5zVIeAdWM2Akaz3lucU48WvHWse7vDQ5DVUflndGhBj7QWM65cbYSD-m_z"
              "tBZB9_Ubj10QzD8_0FBMNb");
}

TEST_F(GADLocationTest, WhatCannotBeEncryptedIsNotSent) {
    for (const char* key : {"0123", "not hexadecimal at all, though 32"}) {
        deterministicHost().settings["ads/location-key"] = key;
        EXPECT_EQ(at(51.5F, -0.25F)->oolongRepresentation(), std::nullopt) << key;
        EXPECT_TRUE(GADLocation::withDescription("Paris")->oolongRepresentation().has_value());
    }
}

}
}
