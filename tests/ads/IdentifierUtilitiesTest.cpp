#include "ads/Utility/GADIdentifierUtilities.h"

#include "ads/Utility/GADHostDeviceEnvironment.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/ads/AdsTest.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace vistrel {
namespace {

class GADIdentifierUtilitiesTest : public AdsTest {
protected:
    static GADIdentifierUtilities& identifiers() {
        return GADIdentifierUtilities::sharedInstance();
    }
    static std::string parameter(std::string_view key) {
        const auto parameters = identifiers().parameters();
        const Value* value = parameters.find(key);
        return value ? std::string(value->isNumber() ? value->numberText() : value->string())
                     : "none";
    }
};

TEST_F(GADIdentifierUtilitiesTest, DescribesTheDeviceInOrder) {
    phone().openableURLs = {"itms-books://", "kindle://home"};
    const Value::Dictionary expected{{"app_name", "1.2.iphone.org.vistrel.Vistrel"},
                                     {"isu", "74E669AF443471BF2DAEDD62649A764B"},
                                     {"platform", "iPhone"},
                                     {"submodel", "iPhone3,1"},
                                     {"hl", "en-gb"},
                                     {"u_audio", "1"},
                                     {"u_so", "p"},
                                     {"u_sd", "2"},
                                     {"u_w", "320"},
                                     {"u_h", "480"},
                                     {"cap_bs", 3}};
    const auto parameters = identifiers().parameters();
    EXPECT_EQ(parameters, expected);
    auto entry = parameters.begin();
    for (const auto& [key, value] : expected) {
        EXPECT_EQ((*entry).key, key);
        ++entry;
    }
}

TEST_F(GADIdentifierUtilitiesTest, WhatIsNotKnownIsLeftOut) {
    phone().modelName = "";
    phone().machineName = "";
    phone().identifier = "";
    phone().languageNames = {};
    phone().bundleVersionText = "";
    for (const char* key : {"isu", "platform", "submodel", "hl", "cap_bs", "ios_ipadc"})
        EXPECT_EQ(parameter(key), "none") << key;
    EXPECT_EQ(parameter("app_name"), "iphone.org.vistrel.Vistrel");
}

TEST_F(GADIdentifierUtilitiesTest, ATabletThatRunsAPhoneApplicationSaysSo) {
    using Idiom = GADInterfaceIdiom;
    const std::tuple<std::string, std::optional<Idiom>, std::string> cases[] = {
        {"iPad", Idiom::Phone, "1"},
        {"iPad", std::nullopt, "1"},
        {"iPad", Idiom::Pad, "none"},
        {"iPhone", Idiom::Phone, "none"},
    };
    for (const auto& [model, idiom, expected] : cases) {
        restartLibrary();
        phone().modelName = model;
        phone().idiom = idiom;
        EXPECT_EQ(parameter("ios_ipadc"), expected) << model;
    }
}

TEST_F(GADIdentifierUtilitiesTest, NamesTheAudioRouteByNumber) {
    const std::pair<std::optional<std::string>, std::string> cases[] = {
        {std::nullopt, "1"}, {"", "3"},        {"Headphone", "2"}, {"Headset", "2"},
        {"Speaker", "1"},    {"speaker", "5"}, {"LineOut", "5"},   {"HeadsetInOut", "5"},
    };
    for (const auto& [route, expected] : cases) {
        phone().route = route;
        EXPECT_EQ(parameter("u_audio"), expected) << route.value_or("none");
    }
}

TEST_F(GADIdentifierUtilitiesTest, MeasuresTheScreenWithItsStatusBar) {
    EXPECT_EQ(parameter("u_h"), "480");
    phone().frames = {768.5F, 1004, 20, true};
    EXPECT_EQ(parameter("u_w"), "768.5");
    EXPECT_EQ(parameter("u_h"), "1004");
    phone().scale = std::nullopt;
    EXPECT_EQ(parameter("u_sd"), "1");
    phone().scale = 1.5F;
    EXPECT_EQ(parameter("u_sd"), "1.5");
}

TEST_F(GADIdentifierUtilitiesTest, TellsHowTheDeviceIsHeld) {
    using Orientation = GADInterfaceOrientation;
    const std::pair<Orientation, std::string> cases[] = {
        {Orientation::Portrait, "p"},
        {Orientation::PortraitUpsideDown, "p"},
        {Orientation::LandscapeLeft, "l"},
        {Orientation::LandscapeRight, "l"},
    };
    for (const auto& [orientation, expected] : cases) {
        phone().orientation = orientation;
        EXPECT_EQ(parameter("u_so"), expected);
    }
}

TEST_F(GADIdentifierUtilitiesTest, KnowsWhichBookShopsCanBeOpened) {
    phone().openableURLs = {"kindle://home"};
    EXPECT_EQ(parameter("cap_bs"), "2");
    phone().openableURLs = {"itms-books://"};
    EXPECT_EQ(parameter("cap_bs"), "1");
    const std::vector<std::string> urls{"itms-books://", "tel:1"};
    EXPECT_EQ(identifiers().canOpenURLs(urls),
              (Value::Dictionary{{"itms-books://", true}, {"tel:1", false}}));
}

TEST_F(GADIdentifierUtilitiesTest, KeepsWhatCannotChangeAndRereadsWhatCan) {
    (void)identifiers().parameters();
    phone().identifier = "another";
    phone().machineName = "iPad1,1";
    phone().languageNames = {"fr"};
    phone().version = "5.0";
    EXPECT_EQ(parameter("isu"), "74E669AF443471BF2DAEDD62649A764B");
    EXPECT_EQ(parameter("submodel"), "iPhone3,1");
    EXPECT_EQ(parameter("hl"), "en-gb");
    EXPECT_EQ(identifiers().osVersion(), "5.0");
}

TEST_F(GADIdentifierUtilitiesTest, SplitsTheSystemVersion) {
    const std::tuple<std::string, int, int, int> cases[] = {
        {"4.3.5", 4, 3, 5}, {"12.5", 12, 5, 0}, {"3", 3, 0, 0},
        {"", 0, 0, 0},      {"5.b.2", 5, 0, 2}, {"4.3.5.6", 4, 3, 5},
    };
    for (const auto& [version, wantedMajor, wantedMinor, wantedBugFix] : cases) {
        phone().version = version;
        int major = -1;
        int minor = -1;
        int bugFix = -1;
        GADIdentifierUtilities::getOSMajorMinorBugFix(&major, &minor, &bugFix);
        EXPECT_EQ(std::tie(major, minor, bugFix), std::tie(wantedMajor, wantedMinor, wantedBugFix))
            << version;
        int onlyMinor = -1;
        GADIdentifierUtilities::getOSMajorMinorBugFix(nullptr, &onlyMinor, nullptr);
        EXPECT_EQ(onlyMinor, wantedMinor);
    }
}

TEST_F(GADIdentifierUtilitiesTest, ComparesVersionsComponentByComponent) {
    phone().version = "4.3.5";
    const std::tuple<int, int, int, bool> cases[] = {
        {4, 3, 5, true}, {4, 3, 6, false}, {4, 2, 9, true},
        {3, 9, 9, true}, {5, 0, 0, false}, {4, 4, 0, false},
    };
    for (const auto& [major, minor, bug, expected] : cases)
        EXPECT_EQ(GADIdentifierUtilities::isOSAtLeastMajorMinorBug(major, minor, bug), expected)
            << major << '.' << minor << '.' << bug;
}

TEST_F(GADIdentifierUtilitiesTest, TheHostsEnvironmentKnowsWhatTheHostKnows) {
    GADHostDeviceEnvironment environment;
    EXPECT_EQ(environment.machine(), "Machine1,1");
    EXPECT_EQ(environment.systemVersion(), "12.5");
    EXPECT_EQ(environment.audioRoute(), "Speaker");
    media().setAudioRoute(host::Failure{ENODEV, "no sound"});
    EXPECT_EQ(environment.audioRoute(), std::nullopt);
    display().setScale(3);
    EXPECT_EQ(environment.screenScale(), 3.0F);
    EXPECT_TRUE(environment.canOpenURL("http://h/"));
    EXPECT_FALSE(environment.canOpenURL("kindle://home"));
    EXPECT_EQ(environment.languages(), std::vector<std::string>{"en"});
    NSUserDefaults::standardUserDefaults().setObjectForKey(Value::Array{"de-AT", "fr"},
                                                           "AppleLanguages");
    EXPECT_EQ(environment.languages(), (std::vector<std::string>{"de-AT", "fr"}));
}

}
}
