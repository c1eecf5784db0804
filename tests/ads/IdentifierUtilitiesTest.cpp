#include "ads/Utility/GADIdentifierUtilities.h"

#include "ads/Utility/GADHostDeviceEnvironment.h"
#include "platform/foundation/NSUserDefaults.h"
#include "tests/ads/AdsTest.h"

#include <tuple>

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

TEST_F(GADIdentifierUtilitiesTest, UnknownValuesAreLeftOut) {
    phone().modelName = "";
    phone().machineName = "";
    phone().identifier = "";
    phone().languageNames = {};
    phone().bundleVersionText = "";
    for (const char* key : {"isu", "platform", "submodel", "hl", "cap_bs", "ios_ipadc"})
        EXPECT_EQ(parameter(key), "none") << key;
    EXPECT_EQ(parameter("app_name"), "iphone.org.vistrel.Vistrel");
}

TEST_F(GADIdentifierUtilitiesTest, ATabletThatRunsAPhoneApplicationIsReported) {
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

TEST_F(GADIdentifierUtilitiesTest, ReportsTheDeviceAsItIsNow) {
    using Orientation = GADInterfaceOrientation;
    const struct {
        std::function<void(ScriptedDevice&)> change;
        const char* key;
        const char* expected;
    } cases[] = {
        {[](auto& phone) { phone.route = std::nullopt; }, "u_audio", "1"},
        {[](auto& phone) { phone.route = ""; }, "u_audio", "3"},
        {[](auto& phone) { phone.route = "Headphone"; }, "u_audio", "2"},
        {[](auto& phone) { phone.route = "Headset"; }, "u_audio", "2"},
        {[](auto& phone) { phone.route = "Speaker"; }, "u_audio", "1"},
        {[](auto& phone) { phone.route = "speaker"; }, "u_audio", "5"},
        {[](auto& phone) { phone.route = "HeadsetInOut"; }, "u_audio", "5"},
        {[](auto& phone) { phone.orientation = Orientation::PortraitUpsideDown; }, "u_so", "p"},
        {[](auto& phone) { phone.orientation = Orientation::LandscapeLeft; }, "u_so", "l"},
        {[](auto& phone) { phone.orientation = Orientation::LandscapeRight; }, "u_so", "l"},
        {[](auto& phone) { phone.orientation = Orientation::Portrait; }, "u_so", "p"},
        {[](auto&) {}, "u_w", "768.5"},
        {[](auto&) {}, "u_h", "1004"},
        {[](auto& phone) { phone.scale = std::nullopt; }, "u_sd", "1"},
        {[](auto& phone) { phone.scale = 1.5F; }, "u_sd", "1.5"},
        {[](auto& phone) { phone.openableURLs = {"kindle://home"}; }, "cap_bs", "2"},
        {[](auto& phone) { phone.openableURLs = {"itms-books://"}; }, "cap_bs", "1"},
    };
    phone().frames = {768.5F, 1004, 20, true};
    for (const auto& row : cases) {
        row.change(phone());
        EXPECT_EQ(parameter(row.key), row.expected) << row.key;
    }
    phone().openableURLs.emplace_back("kindle://home");
    const auto parameters = identifiers().parameters();
    EXPECT_EQ(*parameters.find("cap_bs"), Value(3));
    const std::vector<std::string> urls{"itms-books://", "tel:1"};
    EXPECT_EQ(identifiers().canOpenURLs(urls),
              (Value::Dictionary{{"itms-books://", true}, {"tel:1", false}}));
}

TEST_F(GADIdentifierUtilitiesTest, KeepsConstantValuesAndRereadsTheOthers) {
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
        GADIdentifierUtilities::getOSMajorMinorBugFix(&major, nullptr, &bugFix);
        GADIdentifierUtilities::getOSMajorMinorBugFix(nullptr, &minor, nullptr);
        EXPECT_EQ(std::tie(major, minor, bugFix), std::tie(wantedMajor, wantedMinor, wantedBugFix))
            << version;
    }
}

TEST_F(GADIdentifierUtilitiesTest, ComparesVersionsComponentByComponent) {
    phone().version = "4.3.5";
    const std::array<int, 3> reached[] = {{4, 3, 5}, {4, 2, 9}, {3, 9, 9}};
    for (const auto& [major, minor, bug] : reached)
        EXPECT_TRUE(GADIdentifierUtilities::isOSAtLeastMajorMinorBug(major, minor, bug)) << minor;
    const std::array<int, 3> missed[] = {{4, 3, 6}, {5, 0, 0}, {4, 4, 0}};
    for (const auto& [major, minor, bug] : missed)
        EXPECT_FALSE(GADIdentifierUtilities::isOSAtLeastMajorMinorBug(major, minor, bug)) << minor;
}

TEST_F(GADIdentifierUtilitiesTest, TheHostEnvironmentReportsTheHostsValues) {
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
