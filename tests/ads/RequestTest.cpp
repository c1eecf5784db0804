#include "ads/Request/GADRequestPrivate.h"

#include "ads/Network/GADNetworkChecker.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADSignalGathering.h"
#include "ads/json/GAD_ZelJSON.h"
#include "tests/ads/AdsTest.h"

#include <ctime>

namespace vistrel {
namespace {

class GADRequestTest : public AdsTest {
protected:
    static std::shared_ptr<GADRequestPrivate> aRequest() {
        return std::static_pointer_cast<GADRequestPrivate>(GADRequest::request());
    }
    /// Everything is set.
    std::shared_ptr<GADRequestPrivate> aFullRequest() {
        auto request = aRequest();
        request->setTesting(true);
        request->setTestDevices(std::make_shared<GADRequest::Strings>(
            GADRequest::Strings{"another", phoneIdentity().uniqueIdentifier}));
        request->setAdditionalParameters(
            std::make_shared<Value::Dictionary>(Value::Dictionary{{"q", "shoes"}}));
        request->setGender(GADGender::Female);
        request->setBirthday(352'814'400); // noon of 7 March 1981
        request->addKeyword("cinema");
        request->addKeyword("music");
        request->setLocationWithDescription("Paris");
        request->setInterstitialAd(true);
        request->setCounter(12);
        return request;
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
              "\"u_sd\":\"1\",\"u_w\":\"320\",\"u_h\":\"480\",\"js\":\"afma-sdk-i-v4.1.1\","
              "\"session_id\":" +
                  std::to_string(GADStatistics::sharedStatistics().sessionId()) + ",\"preqs\":0}");
    GADStatistics::sharedStatistics().incrementClickCount();
    EXPECT_EQ(sent(*aRequest(), "pcc"), "1");
    EXPECT_EQ(sent(*aRequest(), "pcc"), "none") << "what was counted is reported once";
}

TEST_F(GADRequestTest, EverythingThatIsSetIsSentInOrder) {
    (void)GADNetworkChecker::sharedChecker();
    turn();
    const auto request = aFullRequest();
    GADStatistics::sharedStatistics().setAdRequestCount(40);
    const std::string text = *GAD_ZelJSON().stringWithObject(Value(request->parameters())).text;
    EXPECT_THAT(text.substr(text.find("\"js\"")),
                ::testing::MatchesRegex(
                    "\"js\":\"[^\"]*\",\"net\":\"wi\",\"testing\":\"1\",\"adtest\":\"on\","
                    "\"extras\":\\{\"q\":\"shoes\"\\},\"cust_gender\":\"f\","
                    "\"cust_age\":\"19810307\",\"kw\":\\[\"cinema\",\"music\"\\],"
                    "\"uule\":\"a\\+[^\"]*\",\"session_id\":[0-9]*,\"preqs\":12\\}"));
    request->setGender(GADGender::Male);
    EXPECT_EQ(sent(*request, "cust_gender"), "\"m\"");
    request->setGender(static_cast<GADGender>(3));
    EXPECT_EQ(sent(*request, "cust_gender"), "none");
}

TEST_F(GADRequestTest, OnlyTheOldTestSwitchAndListedDevicesGetTestAds) {
    const auto request = aRequest();
    EXPECT_EQ(sent(*request, "testing"), "none");
    EXPECT_TRUE(logLines().empty());
    request->setTesting(true);
    for (const std::size_t calls : {1U, 2U}) {
        EXPECT_EQ(sent(*request, "testing"), "\"1\"");
        EXPECT_EQ(logLines(), std::vector<std::string>(
                                  calls, "<GAD> \"testing\" property has been deprecated.  Use "
                                         "\"testDevices\" instead."));
    }
    const std::pair<std::string, const char*> devices[] = {
        {"74E669AF443471BF2DAEDD62649A764B", "none"}, {phoneIdentity().uniqueIdentifier, "\"on\""}};
    for (const auto& [device, expected] : devices) {
        request->setTestDevices(std::make_shared<GADRequest::Strings>(1, device));
        EXPECT_EQ(sent(*request, "adtest"), expected) << device;
    }
}

TEST_F(GADRequestTest, KeywordsAreSharedAndEmptyOnesIgnored) {
    const auto request = aRequest();
    request->addKeyword("");
    EXPECT_EQ(request->keywords(), nullptr);
    request->addKeyword("one");
    EXPECT_EQ(sent(*request, "kw"), "[\"one\"]");
    const auto keywords = std::make_shared<GADRequest::Strings>();
    request->setKeywords(keywords);
    keywords->push_back("later");
    EXPECT_EQ(sent(*request, "kw"), "[\"later\"]");
    request->addKeyword("own");
    EXPECT_THAT(*keywords, ElementsAre("later", "own"));
}

TEST_F(GADRequestTest, ImpreciseCoordinatesClearTheLocation) {
    const auto request = aRequest();
    request->setLocationWithLatitudeLongitudeAccuracy(51.5F, -0.25F, 10);
    EXPECT_THAT(sent(*request, "uule"), StartsWith("\"e1+"));
    deterministicHost().settings["ads/location-key"] = "broken";
    EXPECT_EQ(sent(*request, "uule"), "none");
    EXPECT_EQ(sent(*request, "preqs"), "0") << "nothing else is dropped";
    request->setLocationWithLatitudeLongitudeAccuracy(0.0F, -0.25F, 10);
    EXPECT_EQ(request->location(), nullptr);
    EXPECT_EQ(sent(*request, "uule"), "none");
    request->setLocationWithDescription("Paris");
    request->setLocationWithDescription("");
    EXPECT_EQ(request->location(), nullptr);
}

/// Sets another time zone while it exists.
struct TimeZone {
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

TEST_F(GADRequestTest, ABirthdayIsTheSameDayEverywhereAndHasFourDigitsOfYear) {
    const std::tuple<int, int, int, const char*> cases[] = {
        {1, 2, 2003, "20030102"},
        {12, 31, 1899, "18991231"},
        {2, 29, 2000, "20000229"},
        {2, 29, 2001, "20010301"},
        {13, 1, 2000, "20010101"},
        {10, 18, 2015, "20151018"},
        {1, 1, 1, "00010101"},
        {12, 31, 9999, "99991231"},
        {1, 1, 0, nullptr},
        {1, 1, -5, nullptr},
        {1, 1, 10'000, nullptr},
        {1, 1, 2147483647, nullptr},
        {-2147483647 - 1, 1, 2000, nullptr},
    };
    // In São Paulo, 18 October 2015 began at one o'clock.
    for (const char* zone : {"UTC", "America/Sao_Paulo", "Pacific/Kiritimati", "Pacific/Midway"}) {
        const TimeZone here(zone);
        const auto request = aRequest();
        for (const auto& [month, day, year, text] : cases) {
            request->setBirthdayWithMonthDayYear(1, 1, 2000);
            request->setBirthdayWithMonthDayYear(month, day, year);
            EXPECT_EQ(request->birthday().has_value(), text != nullptr) << year;
            EXPECT_EQ(request->birthdayString().value_or(""), text ? text : "") << zone;
        }
    }
    const auto request = aRequest();
    request->setBirthday(1e300);
    EXPECT_EQ(sent(*request, "cust_age"), "none");
}

TEST_F(GADRequestTest, ACopyHasTheHintsButNotTheCounter) {
    const auto request = aFullRequest();
    const auto copy = std::dynamic_pointer_cast<GADRequestPrivate>(request->copy());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->counter(), 0);
    EXPECT_TRUE(copy->isInterstitialAd());
    request->setCounter(0);
    EXPECT_EQ(copy->parameters(), request->parameters());
    copy->setGender(GADGender::Male);
    EXPECT_EQ(request->gender(), GADGender::Female);
}

TEST_F(GADRequestTest, DescribesWhatIsSet) {
    EXPECT_THAT(aRequest()->description(),
                ::testing::MatchesRegex("GADRequestPrivate<0x[0-9a-f]+>: "));
    const std::string description = aFullRequest()->description();
    EXPECT_EQ(description.substr(description.find('\n')),
              "\ngender:Female\nbirthday:1981-03-07 12:00:00 +0000\nlocation:Paris"
              "\nkeywords:(\n    cinema,\n    music\n)\nadditionalParameters:{\n    q = shoes;\n}");
}

class Signals : public GADSignalGathering {
public:
    explicit Signals(std::string text)
        : text_(std::move(text)) {}
    std::optional<std::string> requestSignals() override { return text_; }

private:
    std::string text_;
};

TEST_F(GADRequestTest, SignalsMakeAtMostOneEntry) {
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
    const std::pair<const char*, int> types[] = {
        {"grokruf", 4}, {"xfp", 5}, {"contextual", 1}, {"Grokruf", 0}};
    for (const auto& [name, type] : types)
        EXPECT_EQ(static_cast<int>(GADRequest::requestTypeFromString(name)), type) << name;
    phoneIdentity().systemVersion = "3.2";
    EXPECT_TRUE(GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(3, 2));
    EXPECT_FALSE(GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(3, 3));
}

}
}
