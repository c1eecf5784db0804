#include "shell/RootViewController.h"

#include "ads/View/GADBannerView.h"
#include "downloads/DownloadsViewController.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/WebBrowserViewController.h"

namespace vistrel {
namespace {

class RootTest : public support::ScreenTest {
protected:
    RootTest() {
        deterministicHost().settings["site/base-url"] = "http://site.example";
        files().putFolder("/var/mobile/Library/Downloads");
        menu_ = show<RootViewController>();
    }

    void select(int section, int row) {
        menu_->tableView()->selectRowAtIndexPath({section, row}, false);
        menu_->tableViewDidSelectRowAtIndexPath(*menu_->tableView(), {section, row});
        settle();
    }

    std::shared_ptr<RootViewController> menu_;
};

TEST_F(RootTest, EverySectionHasItsHeaderAndRowsInOrder) {
    auto& table = *menu_->tableView();
    EXPECT_THAT(labels(UIAccessibilityRole::Heading, table),
                ElementsAre("Choose a Section", "Members", "More Sites"));
    std::vector<std::string> rows;
    for (int section = 0; section < table.numberOfSections(); ++section) {
        EXPECT_EQ(table.rectForHeaderInSection(section).size.height, section == 0 ? 75 : 32);
        for (int row = 0; row < table.numberOfRowsInSection(section); ++row) {
            const auto cell = menu_->tableViewCellForRowAtIndexPath(table, {section, row});
            EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::DisclosureIndicator);
            rows.push_back(std::to_string(section) + " " + cell->textLabel().text());
        }
    }
    ASSERT_EQ(rows.size(), 13U);
    rows.resize(6);
    EXPECT_THAT(rows, ElementsAre("1 TV Shows", "1 Movies", "1 Music", "1 Downloads", "2 VIP Login",
                                  "3 Open Reel"));
}

TEST_F(RootTest, ARowThatDoesNotExistIsAnEmptyCellThatOpensNothing) {
    auto& table = *menu_->tableView();
    for (const NSIndexPath path : {NSIndexPath{0, 0}, {1, -1}, {1, 4}, {4, 0}}) {
        EXPECT_EQ(menu_->tableViewCellForRowAtIndexPath(table, path)->textLabel().text(), "");
        menu_->tableViewDidSelectRowAtIndexPath(table, path);
        EXPECT_EQ(top(), menu_);
    }
}

TEST_F(RootTest, WebRowsOpenANewBrowserOnTheirAddressEachTime) {
    const std::tuple<int, int, const char*, const char*> cases[] = {
        {1, 2, "Music", "http://site.example/music/"},
        {2, 0, "VIP Login", "http://site.example/vip/"},
        {3, 0, "Open Reel", "http://site.example/partner/1/"},
    };
    for (const auto& [section, row, title, address] : cases) {
        select(section, row);
        const auto browser = top<WebBrowserViewController>();
        ASSERT_TRUE(browser) << title;
        EXPECT_EQ(browser->navigationBarTitle(), title);
        EXPECT_EQ(browser->URL()->absoluteString(), address);
        back();
        select(section, row);
        EXPECT_NE(top(), browser);
        back();
    }
}

TEST_F(RootTest, AFingerOnAPagesRowPreparesThePageEngine) {
    const std::tuple<int, int, bool> rows[] = {
        {1, 0, false}, {1, 1, false}, {1, 2, true}, {1, 3, false}, {2, 0, true}};
    auto& table = *menu_->tableView();
    for (const auto& [section, row, prepares] : rows) {
        webEngine().isWarm = false;
        table.scrollToRowAtIndexPath({section, row}, false);
        settle();
        const CGRect place = table.rectForRowAtIndexPath({section, row});
        const CGPoint finger = table.convertPointToView({60, place.midY()}, nullptr);
        touchDown(finger);
        EXPECT_EQ(webEngine().isWarm, prepares) << section << " " << row;
        touchMove({finger.x, finger.y + 40}); // scrolls, so that it selects nothing
        touchUp({finger.x, finger.y + 40});
        settle();
        EXPECT_EQ(top(), menu_);
    }
}

TEST_F(RootTest, ANativeRowShowsTheSameScreenAgainAndStaysSelectedMeanwhile) {
    select(1, 3);
    const auto downloads = top<DownloadsViewController>();
    ASSERT_TRUE(downloads);
    EXPECT_TRUE(menu_->tableView()->indexPathForSelectedRow());
    back();
    EXPECT_FALSE(menu_->tableView()->indexPathForSelectedRow());
    select(1, 3);
    EXPECT_EQ(top(), downloads);
}

TEST_F(RootTest, TheBannerLiesAtTheLowerEdgeAndLoadsAfterTheFirstFrame) {
    const std::tuple<const char*, const char*, bool, std::size_t> cases[] = {
        {"yes", "ads.example:81", true, 1}, {"yes", "", true, 0}, {"no", "a", false, 0}};
    for (const auto& [enabled, server, hasBanner, requests] : cases) {
        network().forgetRequests();
        deterministicHost().settings = {{"ads/enabled", enabled},
                                        {"ads/static-content-host", server}};
        const auto menu = std::make_shared<RootViewController>();
        push(menu);
        EXPECT_TRUE(network().requests().empty());
        settle();
        ASSERT_EQ(menu->bannerView() != nullptr, hasBanner);
        EXPECT_EQ(network().requests().size(), requests);
        if (requests > 0) {
            EXPECT_EQ(network().requestedURLs().front(),
                      "http://ads.example:81/afma/sdk-core-v40.js");
        }
        if (hasBanner) {
            EXPECT_EQ(menu->bannerView()->frame(), CGRectMake(0, 366, 320, 50));
        }
        back();
        menu->didReceiveMemoryWarning();
        EXPECT_FALSE(menu->bannerView());
    }
}

}
}
