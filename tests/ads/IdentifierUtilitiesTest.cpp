#include "ads/Utility/GADIdentifierUtilities.h"

#include "ads/GADSettings.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/UIImage.h"
#include "tests/ads/AdsTest.h"

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
    phoneIdentity() = {};
    for (const char* key : {"isu", "platform", "submodel", "hl", "cap_bs", "ios_ipadc"})
        EXPECT_EQ(parameter(key), "none") << key;
}

TEST_F(GADIdentifierUtilitiesTest, ReportsTheDevice) {
    const auto route = [this](const std::string& name) {
        return [this, name] {
            media().setAudioRoute(name);
        };
    };
    const auto turn = [this](UIInterfaceOrientation orientation) {
        return [this, orientation] {
            application().setStatusBarOrientation(orientation, false);
        };
    };
    const auto install = [this](const std::set<std::string>& schemes) {
        return [this, schemes] {
            desktop().schemes() = schemes;
        };
    };
    using Orientation = UIInterfaceOrientation;
    const std::tuple<std::function<void()>, const char*, const char*> cases[] = {
        {[this] {
             media().setAudioRoute(host::Failure{ENODEV, "no sound"});
         },
         "u_audio", "1"},
        {route(""), "u_audio", "3"},
        {route("Headphone"), "u_audio", "2"},
        {route("Headset"), "u_audio", "2"},
        {route("Speaker"), "u_audio", "1"},
        {route("speaker"), "u_audio", "5"},
        {route("HeadsetInOut"), "u_audio", "5"},
        {turn(Orientation::PortraitUpsideDown), "u_so", "p"},
        {turn(Orientation::LandscapeLeft), "u_so", "l"},
        {turn(Orientation::LandscapeRight), "u_so", "l"},
        {turn(Orientation::Portrait), "u_so", "p"},
        {[] { UIImage::setScreenScale(1.5); }, "u_sd", "1.5"},
        {install({"kindle"}), "cap_bs", "2"},
        {install({"itms-books"}), "cap_bs", "1"},
        {install({"kindle", "itms-books"}), "cap_bs", "3"},
        {[] {}, "ios_ipadc", "none"},
        {[this] { phoneIdentity().model = "iPad"; }, "ios_ipadc", "1"},
        {[] {
             NSUserDefaults::standardUserDefaults().setObjectForKey(Value::Array{"de-AT", "fr"},
                                                                    "AppleLanguages");
         },
         "hl", "de-at"},
    };
    for (const auto& [change, key, expected] : cases) {
        restartLibrary();
        change();
        EXPECT_EQ(parameter(key), expected) << key;
    }
    UIImage::setScreenScale(1);
    const std::vector<std::string> urls{"itms-books://", "tel:1"};
    EXPECT_EQ(identifiers().canOpenURLs(urls),
              (Value::Dictionary{{"itms-books://", true}, {"tel:1", false}}));
}

TEST_F(GADIdentifierUtilitiesTest, KeepsConstantValuesAndRereadsTheOthers) {
    (void)identifiers().parameters();
    phoneIdentity().uniqueIdentifier = "another";
    phoneIdentity().machine = "iPad1,1";
    phoneIdentity().languages = {"fr"};
    phoneIdentity().systemVersion = "5.0";
    media().setAudioRoute(std::string());
    EXPECT_EQ(parameter("isu"), "74E669AF443471BF2DAEDD62649A764B");
    EXPECT_EQ(parameter("submodel"), "iPhone3,1");
    EXPECT_EQ(parameter("hl"), "en-gb");
    EXPECT_EQ(parameter("u_audio"), "3");
    EXPECT_EQ(identifiers().osVersion(), "5.0");
}

TEST_F(GADIdentifierUtilitiesTest, SplitsAndComparesTheSystemVersion) {
    const std::tuple<std::string, int, int, int> cases[] = {
        {"4.3.5", 4, 3, 5}, {"12.5", 12, 5, 0}, {"3", 3, 0, 0},
        {"", 0, 0, 0},      {"5.b.2", 5, 0, 2}, {"4.3.5.6", 4, 3, 5},
    };
    for (const auto& [version, wantedMajor, wantedMinor, wantedBugFix] : cases) {
        phoneIdentity().systemVersion = version;
        int major = -1;
        int minor = -1;
        int bugFix = -1;
        GADIdentifierUtilities::getOSMajorMinorBugFix(&major, nullptr, &bugFix);
        GADIdentifierUtilities::getOSMajorMinorBugFix(nullptr, &minor, nullptr);
        EXPECT_EQ(std::tie(major, minor, bugFix), std::tie(wantedMajor, wantedMinor, wantedBugFix))
            << version;
        const auto isAtLeast = GADIdentifierUtilities::isOSAtLeastMajorMinorBug;
        EXPECT_TRUE(isAtLeast(major, minor, bugFix));
        EXPECT_TRUE(isAtLeast(major, minor - 1, 9));
        EXPECT_TRUE(isAtLeast(major - 1, 9, 9));
        EXPECT_FALSE(isAtLeast(major, minor, bugFix + 1));
        EXPECT_FALSE(isAtLeast(major, minor + 1, 0));
        EXPECT_FALSE(isAtLeast(major + 1, 0, 0));
    }
}

using NetworkCheckerTest = AdsTest;

TEST_F(NetworkCheckerTest, ReportsTheKindOfNetworkWhileEnabled) {
    GADNetworkChecker& checker = GADNetworkChecker::sharedChecker();
    EXPECT_EQ(network().watchedHost(), gadSettingValue(kGADReachabilityHost));
    EXPECT_EQ(checker.networkType(), GADNetworkType::Unknown);
    EXPECT_EQ(checker.networkTypeString(), std::nullopt);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "wi");
    const auto typeAfter = [&](host::Reachability reachability) {
        network().setReachability(reachability);
        turn();
        return checker.networkTypeString();
    };
    EXPECT_EQ(typeAfter(host::Reachability::Cellular), "ed");
    EXPECT_EQ(typeAfter(host::Reachability::NotReachable), std::nullopt);
    EXPECT_EQ(checker.networkType(), GADNetworkType::NotReachable);
    checker.setEnabled(false);
    EXPECT_EQ(network().watchedHost(), "");
    EXPECT_EQ(typeAfter(host::Reachability::Cellular), std::nullopt);
    EXPECT_EQ(checker.changeCount(), 3);
    checker.setEnabled(true);
    turn();
    EXPECT_EQ(checker.networkTypeString(), "ed");
}

}
}
