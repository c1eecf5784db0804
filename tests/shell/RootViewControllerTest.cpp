#include "shell/RootViewController.h"

#include "ads/View/GADBannerView.h"
#include "downloads/DownloadsViewController.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/WebBrowserViewController.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using ::testing::ElementsAre;

class RootTest : public support::ScreenTest {
protected:
    RootTest() {
        deterministicHost().settings["site/base-url"] = "http://site.example";
        files().putFolder("/var/mobile/Library/Downloads");
        menu_ = std::make_shared<RootViewController>();
        push(menu_);
        settle();
    }
    ~RootTest() override { menu_.reset(); }

    void select(int section, int row) {
        menu_->tableView()->selectRowAtIndexPath({section, row}, false);
        menu_->tableViewDidSelectRowAtIndexPath(*menu_->tableView(), {section, row});
        settle();
    }
    std::shared_ptr<UIViewController> top() { return navigation().topViewController(); }
    void back() {
        navigation().popViewControllerAnimated(false);
        settle();
    }

    std::shared_ptr<RootViewController> menu_;
};

TEST_F(RootTest, EverySectionHasItsRowsInOrder) {
    std::vector<std::string> titles;
    for (const auto& record : menu_->menuList())
        titles.push_back(record.title);
    EXPECT_THAT(titles, ElementsAre("TV Shows", "Movies", "Music", "Downloads"));
    auto& table = *menu_->tableView();
    EXPECT_EQ(table.numberOfSections(), 4);
    EXPECT_EQ(table.numberOfRowsInSection(0), 0);
    EXPECT_EQ(table.numberOfRowsInSection(1), 4);
    EXPECT_EQ(table.numberOfRowsInSection(2), 1);
    EXPECT_EQ(table.numberOfRowsInSection(3), 8);
}

TEST_F(RootTest, HeadersHaveTheirHeightsAndNames) {
    auto& table = *menu_->tableView();
    EXPECT_EQ(table.rectForHeaderInSection(0).size.height, 75);
    const char* const names[] = {"Choose a Section", "Members", "More Sites"};
    for (const int section : {1, 2, 3}) {
        EXPECT_EQ(table.rectForHeaderInSection(section).size.height, 32) << section;
        const auto header = menu_->tableViewViewForHeaderInSection(table, section);
        EXPECT_EQ(header->accessibilityElement().role, UIAccessibilityRole::Heading);
        EXPECT_EQ(header->accessibilityElement().label, names[section - 1]);
    }
}

TEST_F(RootTest, ARowThatThereIsNotIsAnEmptyCellThatOpensNothing) {
    auto& table = *menu_->tableView();
    for (const NSIndexPath path : {NSIndexPath{0, 0}, {1, -1}, {1, 4}, {4, 0}}) {
        EXPECT_EQ(menu_->tableViewCellForRowAtIndexPath(table, path)->textLabel().text(), "");
        menu_->tableViewDidSelectRowAtIndexPath(table, path);
        EXPECT_EQ(top(), menu_);
    }
}

TEST_F(RootTest, TheTableAndTheListsCanBeSet) {
    menu_->setTableView(menu_->tableView());
    EXPECT_EQ(menu_->tableView()->dataSource(), menu_) << "the same table is still connected";
    menu_->setMenuList({{"Only", nullptr, nullptr, {}}});
    menu_->setVIPSection({});
    menu_->tableView()->reloadData();
    EXPECT_EQ(menu_->tableView()->numberOfRowsInSection(1), 1);
    EXPECT_EQ(menu_->tableView()->numberOfRowsInSection(2), 0);
}

TEST_F(RootTest, WebRowsOpenANewBrowserEachTimeOnTheSettingsAddress) {
    struct Case {
        int section;
        int row;
        const char* title;
        const char* address;
    };
    const Case cases[] = {
        {1, 2, "Music", "http://site.example/music/"},
        {2, 0, "VIP Login", "http://site.example/vip/"},
        {3, 0, "Open Reel", "http://site.example/partner/1/"},
    };
    for (const Case& each : cases) {
        select(each.section, each.row);
        const auto browser = std::dynamic_pointer_cast<WebBrowserViewController>(top());
        ASSERT_TRUE(browser) << each.title;
        EXPECT_EQ(browser->navigationBarTitle(), each.title);
        EXPECT_EQ(browser->URL()->absoluteString(), each.address);
        back();
        select(each.section, each.row);
        EXPECT_NE(top(), browser);
        back();
    }
}

TEST_F(RootTest, ANativeRowShowsTheSameScreenAgain) {
    select(1, 3);
    const auto downloads = std::dynamic_pointer_cast<DownloadsViewController>(top());
    ASSERT_TRUE(downloads);
    back();
    select(1, 3);
    EXPECT_EQ(top(), downloads);
}

TEST_F(RootTest, TheChosenRowStaysSelectedUntilTheMenuIsBack) {
    select(1, 3);
    EXPECT_TRUE(menu_->tableView()->indexPathForSelectedRow());
    back();
    EXPECT_FALSE(menu_->tableView()->indexPathForSelectedRow());
}

TEST_F(RootTest, EveryRowShowsTheDisclosureIndicatorAndAnUntranslatedTitleStands) {
    for (const auto& cell : menu_->tableView()->visibleCells()) {
        EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::DisclosureIndicator);
        EXPECT_FALSE(cell->textLabel().text().empty());
    }
}

class BannerTest : public support::ScreenTest {};

TEST_F(BannerTest, TheBannerLiesAboveTheLowerEdgeAndLoadsAfterTheFirstFrame) {
    const struct {
        const char* enabled;
        const char* server;
        bool hasBanner;
        std::size_t requests;
    } cases[] = {{"yes", "ads.example:81", true, 1}, {"yes", "", true, 0}, {"no", "a", false, 0}};
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
        navigation().popViewControllerAnimated(false);
        settle();
    }
}

}
}
