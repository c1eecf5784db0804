#include "ads/Statistics/GADStatistics.h"
#include "ads/json/GAD_ZelJSON.h"
#include "tests/ads/BannerTest.h"

#include <cstddef>

namespace vistrel {
namespace {

class EnduranceTest : public BannerTest {
protected:
    EnduranceTest() {
        network()
            .at(kAdURL)
            .body("<p>Ad</p>")
            .header("X-Afma-Tracking-Urls", "http://track.example/a http://silent.example/")
            .header("X-Afma-Click-Tracking-Urls", "http://click.example/a");
        for (const char* url : {"http://track.example/a", "http://click.example/a"})
            network().at(url).body("ok");
        network().at("http://silent.example/").neverAnswers();
    }

    void openAndClose(const std::string& url) {
        ASSERT_EQ(webEngine().pages().size(), 1U) << "a page other than the ad's is alive";
        touchAd();
        go(url, host::WebNavigationType::LinkClicked);
        advance(1);
        auto screen =
            std::dynamic_pointer_cast<GADViewController>(navigation().modalViewController());
        ASSERT_TRUE(screen) << url;
        page().finishLoad();
        screen->relinquishScreen();
        screen.reset(); // its page is emptied two seconds later
        advance(5);
    }

    /// What the ad and its screens have left behind, in counts that a leak increases.
    std::string footprint() {
        GADStatistics& statistics = GADStatistics::sharedStatistics();
        statistics.synchronize();
        const std::string stored = *GAD_ZelJSON().stringWithObject(preferences().stored()).text;
        std::ostringstream text;
        text << webEngine().pages().size() << " pages, " << network().runningTransfers()
             << " transfers, " << std::ranges::count(stored, ',') << " stored, reported:";
        for (const auto& [key, value] : statistics.parameters())
            text << ' ' << key << (key == "pcc" ? "=" + std::to_string(value.integerValue()) : "");
        return text.str();
    }
};

TEST_F(EnduranceTest, AdsAndTheirScreensLeaveNothingBehind) {
    // Each round is one ad and two screens.
    const char* asked = std::getenv("VISTREL_ENDURANCE_ROUNDS");
    const int rounds = asked ? std::atoi(asked) : 50;
    std::string first;
    std::size_t pendingWork = 0;
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        show();
        advance(0.2);
        for (const char* url :
             {"http://shop.example/a", "gmsg://ads/open?a=browser&u=http://shop.example/b"})
            ASSERT_NO_FATAL_FAILURE(openAndClose(url));
        advance(60); // until a server that does not answer times out
        const std::string now = footprint();
        if (first.empty()) {
            first = now;
            pendingWork = loop().pendingWork();
        }
        ASSERT_EQ(now, first);
        if (loop().pendingWork() != pendingWork)
            advance(1); // the status bar's clock may have been due just then
        ASSERT_EQ(loop().pendingWork(), pendingWork);
    }
    EXPECT_THAT(first, HasSubstr(" 0 transfers"));
    EXPECT_EQ(GADStatistics::sharedStatistics().adRequestCount(), rounds);
    EXPECT_EQ(requestsFor("http://click.example/a"), 2 * rounds);
}

}
}
