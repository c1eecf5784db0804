#include "ads/Request/GADRequestPrivate.h"

#include "ads/Network/GADNetworkChecker.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADSignalGathering.h"
#include "ads/json/GAD_ZelJSON.h"
#include "tests/ads/AdsTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace vistrel {
namespace {

class GADRequestTest : public AdsTest {
protected:
    static std::shared_ptr<GADRequestPrivate> aRequest() {
        return std::static_pointer_cast<GADRequestPrivate>(GADRequest::request());
    }
    static std::string sent(const GADRequestPrivate& request, std::string_view key) {
        const auto parameters = request.parameters();
        const Value* value = parameters.find(key);
        return value ? *GAD_ZelJSON().stringWithFragment(*value).text : "none";
    }
};

TEST_F(GADRequestTest, ARequestWithNothingSetSendsTheDeviceAndTheStatistics) {
    EXPECT_EQ(*GAD_ZelJSON().stringWithObject(Value(aRequest()->parameters())).text,
              "{\"app_name\":\"1.2.iphone.org.vistrel.Vistrel\","
              "\"isu\":\"74E669AF443471BF2DAEDD62649A764B\",\"platform\":\"iPhone\","
              "\"submodel\":\"iPhone3,1\",\"hl\":\"en-gb\",\"u_audio\":\"1\",\"u_so\":\"p\","
              "\"u_sd\":\"2\",\"u_w\":\"320\",\"u_h\":\"480\",\"js\":\"afma-sdk-i-v4.1.1\","
              "\"session_id\":" +
                  std::to_string(GADStatistics::sharedStatistics().sessionId()) + ",\"preqs\":0}");
}

TEST_F(GADRequestTest, EverythingThatIsSetIsSentInOrder) {
    (void)GADNetworkChecker::sharedChecker();
    turn();
    const auto request = aRequest();
    request->setTesting(true);
    request->setTestDevices(
        std::make_shared<GADRequest::Strings>(GADRequest::Strings{"another", phone().identifier}));
    request->setAdditionalParameters(
        std::make_shared<Value::Dictionary>(Value::Dictionary{{"q", "shoes"}}));
    request->setGender(GADGender::Female);
    request->setBirthdayWithMonthDayYear(3, 7, 1981);
    request->addKeyword("cinema");
    request->addKeyword("music");
    request->setLocationWithDescription("Paris");
    request->setCounter(12);
    GADStatistics::sharedStatistics().setAdRequestCount(40);
    std::vector<std::string> keys;
    const auto parameters = request->parameters();
    for (const auto& [key, value] : parameters)
        keys.emplace_back(key);
    EXPECT_THAT(keys, ::testing::ElementsAre("app_name", "isu", "platform", "submodel", "hl",
                                             "u_audio", "u_so", "u_sd", "u_w", "u_h", "js", "net",
                                             "testing", "adtest", "extras", "cust_gender",
                                             "cust_age", "kw", "uule", "session_id", "preqs"));
    EXPECT_EQ(parameters.find("net")->string(), "wi");
    EXPECT_EQ(parameters.find("testing")->string(), "1");
    EXPECT_EQ(parameters.find("adtest")->string(), "on");
    EXPECT_EQ(*parameters.find("extras"), Value(Value::Dictionary{{"q", "shoes"}}));
    EXPECT_EQ(parameters.find("cust_gender")->string(), "f");
    EXPECT_EQ(parameters.find("cust_age")->string(), "19810307");
    EXPECT_EQ(*parameters.find("kw"), Value(Value::Array{"cinema", "music"}));
    EXPECT_THAT(std::string(parameters.find("uule")->string()), ::testing::StartsWith("a+"));
    EXPECT_EQ(*parameters.find("preqs"), Value(12));
}

TEST_F(GADRequestTest, TheOldTestSwitchIsLoggedEachTime) {
    const auto request = aRequest();
    EXPECT_EQ(sent(*request, "testing"), "none");
    EXPECT_TRUE(logLines().empty());
    request->setTesting(true);
    EXPECT_EQ(sent(*request, "testing"), "\"1\"");
    EXPECT_THAT(logLines(), ::testing::ElementsAre("<GAD> \"testing\" property has been "
                                                   "deprecated.  Use \"testDevices\" instead."));
    (void)request->parameters();
    EXPECT_EQ(logLines().size(), 2U);
}

TEST_F(GADRequestTest, OnlyAListedDeviceGetsTestAds) {
    const auto request = aRequest();
    request->setTestDevices(std::make_shared<GADRequest::Strings>(
        GADRequest::Strings{"74E669AF443471BF2DAEDD62649A764B"}));
    EXPECT_EQ(sent(*request, "adtest"), "none");
    request->setTestDevices(
        std::make_shared<GADRequest::Strings>(GADRequest::Strings{phone().identifier}));
    EXPECT_EQ(sent(*request, "adtest"), "\"on\"");
}

TEST_F(GADRequestTest, ReportsWhatWasCountedOnceOnly) {
    const auto request = aRequest();
    GADStatistics::sharedStatistics().incrementClickCount();
    EXPECT_EQ(sent(*request, "pcc"), "1");
    EXPECT_EQ(sent(*request, "pcc"), "none");
}

TEST_F(GADRequestTest, KeywordsBeginWithTheFirstThatIsNotEmpty) {
    const auto request = aRequest();
    request->addKeyword("");
    EXPECT_EQ(request->keywords(), nullptr);
    request->addKeyword("one");
    EXPECT_THAT(*request->keywords(), ::testing::ElementsAre("one"));
}

TEST_F(GADRequestTest, WhatIsSetIsRetainedNotCopied) {
    const auto request = aRequest();
    const auto keywords = std::make_shared<GADRequest::Strings>();
    request->setKeywords(keywords);
    keywords->push_back("later");
    EXPECT_EQ(sent(*request, "kw"), "[\"later\"]");
    request->addKeyword("own");
    EXPECT_THAT(*keywords, ::testing::ElementsAre("later", "own"));
}

TEST_F(GADRequestTest, APlaceThatIsNotPreciseClearsTheLocation) {
    const auto request = aRequest();
    request->setLocationWithLatitudeLongitudeAccuracy(51.5F, -0.25F, 10);
    ASSERT_NE(request->location(), nullptr);
    EXPECT_THAT(sent(*request, "uule"), ::testing::StartsWith("\"e1+"));
    request->setLocationWithLatitudeLongitudeAccuracy(0.0F, -0.25F, 10);
    EXPECT_EQ(request->location(), nullptr);
    EXPECT_EQ(sent(*request, "uule"), "none");
    request->setLocationWithDescription("Paris");
    request->setLocationWithDescription("");
    EXPECT_EQ(request->location(), nullptr);
}

TEST_F(GADRequestTest, ALocationThatCannotBeSentDropsNothingElse) {
    deterministicHost().settings["ads/location-key"] = "broken";
    const auto request = aRequest();
    request->setLocationWithLatitudeLongitudeAccuracy(51.5F, -0.25F, 10);
    EXPECT_EQ(sent(*request, "uule"), "none");
    EXPECT_EQ(sent(*request, "preqs"), "0");
}

TEST_F(GADRequestTest, NamesTheGender) {
    const auto request = aRequest();
    EXPECT_EQ(sent(*request, "cust_gender"), "none");
    request->setGender(GADGender::Male);
    EXPECT_EQ(sent(*request, "cust_gender"), "\"m\"");
    request->setGender(static_cast<GADGender>(3));
    EXPECT_EQ(sent(*request, "cust_gender"), "none");
}

/// Runs with another time zone and puts the old one back.
class TimeZone {
public:
    explicit TimeZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~TimeZone() {
        unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
};

TEST_F(GADRequestTest, ABirthdayIsTheSameDayEverywhere) {
    const struct {
        int month;
        int day;
        int year;
        const char* sent;
    } cases[] = {
        {1, 2, 2003, "20030102"},  {12, 31, 1899, "18991231"}, {2, 29, 2000, "20000229"},
        {2, 29, 2001, "20010301"}, {13, 1, 2000, "20010101"},  {10, 18, 2015, "20151018"},
        {1, 1, 1, "00010101"},     {12, 31, 9999, "99991231"},
    };
    // São Paulo had days that began at one o'clock: 18 October 2015 is one of them.
    for (const char* zone : {"UTC", "America/Sao_Paulo", "Pacific/Kiritimati", "Pacific/Midway"}) {
        const TimeZone here(zone);
        const auto request = aRequest();
        for (const auto& [month, day, year, text] : cases) {
            request->setBirthdayWithMonthDayYear(month, day, year);
            EXPECT_EQ(request->birthdayString(), text) << zone;
        }
    }
}

TEST_F(GADRequestTest, ABirthdayBeyondFourDigitsIsNone) {
    const auto request = aRequest();
    for (const int year : {0, -5, 10'000, 2147483647}) {
        request->setBirthdayWithMonthDayYear(1, 1, 2000);
        request->setBirthdayWithMonthDayYear(1, 1, year);
        EXPECT_EQ(request->birthday(), std::nullopt) << year;
    }
    request->setBirthdayWithMonthDayYear(-2147483647 - 1, 1, 2000);
    EXPECT_EQ(request->birthday(), std::nullopt);
    request->setBirthday(1e300);
    EXPECT_EQ(sent(*request, "cust_age"), "none");
}

TEST_F(GADRequestTest, ACopyTakesOverTheHintsButNotTheCounter) {
    const auto request = aRequest();
    request->setTesting(true);
    request->setTestDevices(std::make_shared<GADRequest::Strings>());
    request->setAdditionalParameters(std::make_shared<Value::Dictionary>());
    request->setGender(GADGender::Male);
    request->setBirthday(5);
    request->setLocationWithDescription("Paris");
    request->addKeyword("one");
    request->setInterstitialAd(true);
    request->setCounter(9);
    const auto copy = std::dynamic_pointer_cast<GADRequestPrivate>(request->copy());
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->testing());
    EXPECT_EQ(copy->testDevices(), request->testDevices());
    EXPECT_EQ(copy->additionalParameters(), request->additionalParameters());
    EXPECT_EQ(copy->gender(), GADGender::Male);
    EXPECT_EQ(copy->birthday(), 5);
    EXPECT_EQ(copy->location(), request->location());
    EXPECT_EQ(copy->keywords(), request->keywords());
    EXPECT_TRUE(copy->isInterstitialAd());
    EXPECT_EQ(copy->counter(), 0);
    copy->setGender(GADGender::Female);
    EXPECT_EQ(request->gender(), GADGender::Male);
}

TEST_F(GADRequestTest, DescribesWhatIsSet) {
    const auto request = aRequest();
    EXPECT_THAT(request->description(),
                ::testing::MatchesRegex("GADRequestPrivate<0x[0-9a-f]+>: "));
    request->setGender(GADGender::Female);
    request->setBirthday(0);
    request->setLocationWithDescription("Paris");
    request->addKeyword("one");
    request->setAdditionalParameters(
        std::make_shared<Value::Dictionary>(Value::Dictionary{{"q", "x"}}));
    const std::string description = request->description();
    EXPECT_EQ(description.substr(description.find('\n')),
              "\ngender:Female\nbirthday:1970-01-01 00:00:00 +0000\nlocation:Paris"
              "\nkeywords:(\n    one\n)\nadditionalParameters:{\n    q = x;\n}");
}

class Signals : public GADSignalGathering {
public:
    explicit Signals(std::string text)
        : text_(std::move(text)) {}
    std::optional<std::string> requestSignals() override { return text_; }

private:
    std::string text_;
};

TEST_F(GADRequestTest, SignalsAreOneEntryOrNone) {
    const auto request = aRequest();
    EXPECT_TRUE(request->spamSignals().empty());
    const std::pair<const char*, Value::Dictionary> cases[] = {
        {"ms=abc", {{"ms", "abc"}}},
        {"ms=abc=def", {{"ms", "abc"}}},
        {"=abc", {{"", "abc"}}},
        {"ms=", {}},
        {"ms", {}},
        {"", {}},
    };
    for (const auto& [text, expected] : cases) {
        GADSignalGathering::setShared(std::make_shared<Signals>(text));
        EXPECT_EQ(request->spamSignals(), expected) << text;
    }
}

TEST_F(GADRequestTest, KnowsTheRequestTypesAndTheOldestSystem) {
    EXPECT_EQ(static_cast<int>(GADRequest::requestTypeFromString("grokruf")), 4);
    EXPECT_EQ(static_cast<int>(GADRequest::requestTypeFromString("xfp")), 5);
    EXPECT_EQ(static_cast<int>(GADRequest::requestTypeFromString("contextual")), 1);
    EXPECT_EQ(static_cast<int>(GADRequest::requestTypeFromString("Grokruf")), 0);
    const struct {
        const char* version;
        bool enough;
    } cases[] = {{"3.0", true}, {"2.9.9", false}, {"3", true}, {"12.5", true}};
    for (const auto& [version, enough] : cases) {
        phone().version = version;
        EXPECT_EQ(GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(3, 0), enough)
            << version;
    }
    phone().version = "4.2.1";
    EXPECT_TRUE(GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(4, 2));
    EXPECT_FALSE(GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(4, 3));
}

}
}
