#include "catalogue/MoviesTableViewCell.h"
#include "catalogue/MoviesViewController.h"
#include "catalogue/TVShowsTableViewCell.h"
#include "catalogue/TVShowsViewController.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITableView.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/WebBrowserViewController.h"

namespace vistrel {
namespace {

class CatalogueScreensTest : public support::ScreenTest {
protected:
    void selectRow(UITableView& table, int row) {
        table.scrollToRowAtIndexPath({0, row}, false);
        settle();
        const CGRect rect = table.rectForRowAtIndexPath({0, row});
        // On the screen, not in the cell: whatever covers the list is touched first.
        tap(table.convertPointToView({rect.midX(), rect.midY()}, nullptr));
        settle();
    }
    struct Opening {
        int row;
        const char* title;
        const char* path;
    };
    void expectOpenings(UITableView& table, const std::vector<Opening>& openings) {
        for (const auto& [row, title, path] : openings) {
            selectRow(table, row);
            const auto browser = top<WebBrowserViewController>();
            ASSERT_NE(browser, nullptr) << row;
            EXPECT_EQ(browser->navigationBarTitle(), title);
            EXPECT_EQ(browser->URL()->absoluteString(),
                      std::string("http://vistrel.example") + path);
            EXPECT_EQ(table.indexPathForSelectedRow(), (NSIndexPath{0, row}));
            back();
            EXPECT_EQ(table.indexPathForSelectedRow(), std::nullopt);
        }
    }
};

TEST_F(CatalogueScreensTest, ATapThroughTheShineOpensTheShowsPage) {
    application().setNetworkActivityIndicatorVisible(true);
    auto screen = show<TVShowsViewController>();
    UITableView& table = *screen->tableView();
    EXPECT_EQ(screen->navigationItem().title(), "TV Shows");
    EXPECT_FALSE(application().isNetworkActivityIndicatorVisible());
    EXPECT_EQ(table.frame(), CGRectMake(27, 145, 265, 155));
    EXPECT_FALSE(table.isOpaque()) << "the television is seen through it";
    const auto heading =
        std::dynamic_pointer_cast<UILabel>(find(UIAccessibilityRole::Label, "Select a Show"));
    ASSERT_NE(heading, nullptr);
    EXPECT_EQ(heading->frame(), CGRectMake(56, 29, 207, 67));
    EXPECT_EQ(heading->font(), UIFont::boldSystemFontOfSize(24));
    ASSERT_EQ(table.numberOfRowsInSection(0), 146);
    const auto cell =
        std::dynamic_pointer_cast<TVShowsTableViewCell>(table.cellForRowAtIndexPath({0, 1}));
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->tvShowText(), "30 Rock");
    EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::DisclosureIndicator);
    EXPECT_EQ(cell->frame(), CGRectMake(0, 44, 265, 44));
    expectOpenings(table, {{0, "24", "/tvshows/24.html"},
                           {9, "Better Off Ted", "/tvshows/boondocks.html"},
                           {29, "Community", "/db/showthread.php?p=981&posted=1#post981"},
                           {145, "WWE PPV Wrestling", "/tvshows/wwe.html"}});
}

TEST_F(CatalogueScreensTest, NoBackgroundIsStretched) {
    deterministicHost().host.resourcePath = VISTREL_BUNDLE_DIR;
    const auto expectNatural = [](const UIView& view) {
        const auto& picture = dynamic_cast<const UIImageView&>(view);
        ASSERT_NE(picture.image(), nullptr);
        EXPECT_EQ(picture.image()->size(), picture.frame().size) << "drawn for exactly this place";
    };
    auto shows = show<TVShowsViewController>();
    expectNatural(*shows->view()->subviews()[0]);
    expectNatural(*shows->view()->subviews()[2]);
    expectNatural(*show<MoviesViewController>()->view()->subviews()[0]);
}

TEST_F(CatalogueScreensTest, NoRowFadesOutOnReturn) {
    auto screen = show<TVShowsViewController>();
    selectRow(*screen->tableView(), 1);
    auto cell = screen->tableView()->cellForRowAtIndexPath({0, 1});
    screen->viewDidAppear(true);
    EXPECT_FALSE(cell->isHighlighted());
    EXPECT_EQ(cell->subviews().front()->presentationState().alpha, 0);
}

TEST_F(CatalogueScreensTest, ARowCanBeTappedAfterASlowDrag) {
    auto screen = show<MoviesViewController>();
    touchDown({150, 400});
    for (int step = 1; step <= 72; ++step) {
        advance(1.0 / 60);
        touchMove({150, 400 - 150.0 * step / 72});
        screenshot();
    }
    touchUp({150, 250});
    settle();
    EXPECT_FALSE(screen->tableView()->isDecelerating() || screen->tableView()->isDragging());
    tap({160, 281});
    settle();
    EXPECT_TRUE(top<WebBrowserViewController>());
}

TEST_F(CatalogueScreensTest, TheMoviePagesAreTallCards) {
    auto screen = show<MoviesViewController>();
    EXPECT_EQ(screen->navigationItem().title(), "Movies");
    UITableView& table = *screen->tableView();
    EXPECT_EQ(table.numberOfRowsInSection(0), 29);
    EXPECT_EQ(table.rectForRowAtIndexPath({0, 28}), CGRectMake(0, 28 * 160, 320, 160));
    const auto cell =
        std::dynamic_pointer_cast<MoviesTableViewCell>(table.cellForRowAtIndexPath({0, 2}));
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->topTextLabel(), "Now Showing:");
    EXPECT_EQ(cell->bottomTextLabel(), "\"#\" Movies");
    EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::None);
    expectOpenings(table, {{0, "In Theatres", "/mdb/inthe.html"},
                           {2, "\"#\" Movies", "/mdb/number.html"},
                           {28, "\"Z\" Movies", "/mdb/z.html"}});
}

TEST_F(CatalogueScreensTest, AScreenRebuildsItsViewAfterAMemoryWarning) {
    auto screen = show<MoviesViewController>();
    auto table = screen->tableView();
    back();
    screen->didReceiveMemoryWarning();
    EXPECT_EQ(table->dataSource(), nullptr);
    EXPECT_EQ(table->delegate(), nullptr);
    push(screen);
    EXPECT_NE(screen->tableView(), table);
    EXPECT_EQ(screen->tableView()->numberOfRowsInSection(0), 29);
}

}
}
