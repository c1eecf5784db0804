#include "platform/uikit/UIAccessibilityTree.h"
#include "tests/ads/BannerTest.h"

namespace vistrel {
namespace {

class BridgeTest : public BannerTest {
protected:
    BridgeTest() {
        desktop().schemes().insert("tel");
        network().at("http://track.example/1").body("ok");
        network().at("http://click.example/1").body("ok");
    }

    /// Shows an ad and waits until a touch on it counts.
    void showAd() {
        show();
        advance(0.2);
    }

    /// Everything that a navigation of the ad's page causes.
    std::string outcomeOf(const std::string& url, host::WebNavigationType type) {
        support::ScriptedWebPage& ad = page();
        const auto calls = ad.calls().size();
        const auto opened = desktop().openedURLs().size();
        const int vibrations = desktop().vibrations();
        network().forgetRequests();
        support::Heard outcome;
        if (go(url, type))
            outcome("loads");
        advance(2);
        if (navigation().modalViewController())
            outcome("presents " + page().calls().front());
        for (auto at = opened; at < desktop().openedURLs().size(); ++at)
            outcome("opens " + desktop().openedURLs()[at]);
        for (const auto& request : network().requestedURLs())
            outcome("pings " + request);
        for (auto at = calls; at < ad.calls().size(); ++at)
            outcome("tells " + ad.calls()[at]);
        if (desktop().vibrations() != vibrations)
            outcome("vibrates");
        return outcome.take();
    }
};

struct Row {
    const char* name;
    const char* url;
    std::string touched;
    std::string refused; ///< the outcome without a touch when the host requires one
    bool isRefused = refused != touched;
};

class CommandTest : public BridgeTest, public testing::WithParamInterface<Row> {};

TEST_P(CommandTest, NeedsATouchOnlyToLeadOutOfTheAd) {
    const Row& row = GetParam();
    constexpr auto type = host::WebNavigationType::Other;
    showAd();
    EXPECT_EQ(outcomeOf(row.url, type), row.touched) << "no policy, no touch";
    logLines().clear();
    GADSafetyPolicy::setShared(GADSafetyPolicy{});
    EXPECT_EQ(outcomeOf(row.url, type), row.refused) << "policy, no touch";
    EXPECT_EQ(logLines().size(), row.isRefused ? 1U : 0U) << testing::PrintToString(logLines());
    touchAd();
    EXPECT_EQ(outcomeOf(row.url, type), row.touched) << "policy, touched";
    (void)GADStatistics::sharedStatistics().parameters();
    advance(10);
    EXPECT_EQ(outcomeOf(row.url, type), row.refused) << "policy, touched long ago";
    if (row.isRefused) {
        EXPECT_FALSE(GADStatistics::sharedStatistics().parameters().contains("pcc"));
    }
}

constexpr const char* kPing = "pings http://track.example/1";
constexpr const char* kOpenable =
    "tells evaluate AFMA_ReceiveMessage('openableURLs', {\"tel:1\":true,\"odd:2\":false});";

const Row kCommands[] = {
    {"Track", "gmsg://ads/httpTrack?u=http://track.example/1", kPing, kPing},
    {"Click", "gmsg://ads/click?u=http://track.example/1", kPing, kPing},
    {"Vibrate", "gmsg://ads/vibrate", "vibrates", ""},
    {"Call", "gmsg://ads/open?a=call&u=tel:123", "opens tel:123", ""},
    {"CallInTheBrowser", "gmsg://ads/open?a=browser&u=tel:123", "opens tel:123", ""},
    {"Telephone", "tel:123", "opens tel:123", ""},
    {"File", "file:///etc/passwd", "", ""},
    {"CanOpen", "gmsg://ads/canOpenURLs?urls=tel:1,odd:2", kOpenable, kOpenable},
    {"EvaluateWithoutOpener", "gmsg://ads/evalInOpener?js=1", "", ""},
    {"CloseInABanner", "gmsg://ads/close", "", ""},
    {"Touch", "gmsg://ads/touch?tx=1&ty=2&td=0", "", ""},
    {"UnknownName", "gmsg://ads/selfdestruct", "", "", true},
    {"UnknownHost", "grokruf://selfdestruct", "", "", true},
};

INSTANTIATE_TEST_SUITE_P(Bridge, CommandTest, testing::ValuesIn(kCommands),
                         [](const auto& row) { return std::string(row.param.name); });

struct Navigation {
    const char* name;
    double secondsAfterShowing;
    bool touched;
    host::WebNavigationType type;
    const char* header; ///< "X-Afma-Click-Tracking-Urls" of the ad
    std::string outcome;
    const char* url = "http://shop.example/a";
};

class ClickTest : public BridgeTest, public testing::WithParamInterface<Navigation> {};

TEST_P(ClickTest, NeedsATouchAndTimeToSeeTheAd) {
    const Navigation& row = GetParam();
    adWith("X-Afma-Click-Tracking-Urls", row.header);
    load();
    answerScript();
    page().finishLoad();
    advance(row.secondsAfterShowing);
    if (row.touched)
        touchAd();
    EXPECT_EQ(outcomeOf(row.url, row.type), row.outcome);
    EXPECT_EQ(takeEvents(),
              navigation().modalViewController() ? "received, will present" : "received");
    EXPECT_EQ(GADStatistics::sharedStatistics().parameters().contains("pcc"),
              row.outcome != "loads");
}

using Type = host::WebNavigationType;
constexpr auto kLink = Type::LinkClicked;
const std::string kPresents = "presents load http://shop.example/a";
const std::string kPings = kPresents + ", pings http://click.example/1";

const Navigation kNavigations[] = {
    {"Browser", 0.2, true, kLink, "", kPresents},
    {"ByAScript", 0.2, true, Type::Other, "", kPresents},
    {"WebAppWithPings", 0.2, true, kLink, "http://click.example/1", kPings},
    {"Launch", 0.2, true, kLink, "", kPresents, "grokruf://launch?url=http://shop.example/a"},
    {"WebAppOfHTML", 0.2, true, kLink, "", "presents loadHTML ",
     "gmsg://ads/open?a=webapp&html=%3Cb%3E"},
    {"TooSoon", 0.1, true, kLink, "", "loads"},
    {"Untouched", 0.2, false, kLink, "", "loads"},
    {"Back", 0.2, true, Type::BackForward, "", "loads"},
    {"Reload", 0.2, true, Type::Reload, "", "loads"},
};

INSTANTIATE_TEST_SUITE_P(Bridge, ClickTest, testing::ValuesIn(kNavigations),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(BridgeTest, AClickWhileAScreenIsUpOpensNothing) {
    adWith("X-Afma-Click-Tracking-Urls", "http://click.example/1");
    showAd();
    touchAd();
    support::ScriptedWebPage& ad = page();
    for (const char* url : {"http://shop.example/a", "http://shop.example/b", "mailto:a@h"})
        ad.clickLink(url);
    advance(2);
    EXPECT_EQ(takeEvents(), "received, will present");
    EXPECT_EQ(requestsFor("http://click.example/1"), 1);
}

TEST_F(BridgeTest, WhatAPageSaysIsOneLineOfTheLog) {
    showAd();
    GADSafetyPolicy::setShared(GADSafetyPolicy{});
    logLines().clear();
    go("gmsg://ads/log?string=a%0Ab%1Bc%C2%9Bd");
    go("gmsg://ads/log?string=" + std::string(1001, 'a'));
    go("gmsg://ads/" + std::string(119, 'a') + "%C3%A9%C3%A9");
    EXPECT_THAT(logLines(), ElementsAre("a b c d", std::string(1000, 'a') + "...",
                                        "<GAD> Refused \"" + std::string(119, 'a') +
                                            "\u00e9...\": the bridge has no such command."));
}

TEST_F(BridgeTest, AClickIsPingedWithItsSignalsUnlessTheyMakeNoAddress) {
    class Signals : public GADSignalGathering {
    public:
        std::optional<std::string> clickSignals(const std::string& ad) override {
            return ad == "1" ? "signals" : "no address";
        }
    };
    GADSignalGathering::setShared(std::make_shared<Signals>());
    showAd();
    const std::string click = "gmsg://ads/click?u=http://h/%3Fai%3D";
    EXPECT_EQ(outcomeOf(click + "1", Type::Other), "pings http://h/?ai=1&signals");
    EXPECT_EQ(outcomeOf(click + "2", Type::Other), "pings http://h/?ai=2");
}

TEST_F(BridgeTest, AMailAddressFillsTheComposer) {
    showAd();
    touchAd();
    go("mailto:a@example.com?subject=Hi&cc=b@example.com,c@example.com&body=Hello", kLink);
    advance(2);
    ASSERT_TRUE(navigation().modalViewController());
    std::string fields;
    for (const auto& element : accessibilityTree(application().screenView()))
        if (element.element.role == UIAccessibilityRole::Field)
            fields += element.element.value + "|";
    EXPECT_EQ(fields, "a@example.com|b@example.com, c@example.com||Hi|Hello|");
}

}
}
