#include "catalogue/MoviesTableViewCell.h"
#include "catalogue/MoviesViewController.h"
#include "catalogue/TVShowsTableViewCell.h"
#include "catalogue/TVShowsViewController.h"
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/SceneVisitor.h"
#include "platform/uikit/SceneWalk.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITableView.h"
#include "tests/support/ui/PaintingCounter.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/WebBrowserViewController.h"

#include <gmock/gmock.h>
#include <set>

namespace vistrel {
namespace {

class CatalogueScreensTest : public support::ScreenTest {
protected:
    ~CatalogueScreensTest() override {
        if (navigation)
            navigation->view()->removeFromSuperview();
    }

    /// Puts the screen under a navigation bar, over a menu, as the application does.
    template <typename Screen>
    std::shared_ptr<Screen> show() {
        auto screen = std::make_shared<Screen>();
        navigation =
            UINavigationController::withRootViewController(std::make_shared<UIViewController>());
        window().addSubview(navigation->view());
        navigation->pushViewController(screen, false);
        settle();
        return screen;
    }
    void settle() {
        for (int frame = 0; frame < 60; ++frame) {
            advance(1.0 / 60);
            renderViewToBitmap(window(), 1);
        }
    }
    std::shared_ptr<WebBrowserViewController> browser() {
        return std::dynamic_pointer_cast<WebBrowserViewController>(navigation->topViewController());
    }
    void selectRow(UITableView& table, int row) {
        table.scrollToRowAtIndexPath({0, row}, false);
        renderViewToBitmap(window(), 1);
        const CGRect rect = table.rectForRowAtIndexPath({0, row});
        // Not in the cell, on the screen: whatever lies over the list is touched first.
        tap(table.convertPointToView({rect.midX(), rect.midY()}, nullptr));
        settle();
    }
    void goBack() {
        navigation->popViewControllerAnimated(true);
        settle();
    }

    std::shared_ptr<UINavigationController> navigation;
};

TEST_F(CatalogueScreensTest, TheShowsStandOnTheTelevisionUnderItsShine) {
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(true);
    auto screen = show<TVShowsViewController>();
    EXPECT_EQ(screen->navigationItem().title(), "TV Shows");
    EXPECT_FALSE(UIApplication::sharedApplication().isNetworkActivityIndicatorVisible());
    const auto& views = screen->view()->subviews();
    ASSERT_EQ(views.size(), 4U);
    EXPECT_EQ(views[0]->frame(), CGRectMake(0, 0, 320, 460)) << "the view's size while it loads";
    EXPECT_EQ(views[1], screen->tableView());
    EXPECT_EQ(views[1]->frame(), CGRectMake(27, 145, 265, 155));
    EXPECT_FALSE(views[1]->isOpaque());
    EXPECT_EQ(views[1]->backgroundColor(), UIColor::clearColor());
    EXPECT_EQ(views[2]->frame(), views[0]->frame());
    const auto heading = std::dynamic_pointer_cast<UILabel>(views[3]);
    ASSERT_NE(heading, nullptr);
    EXPECT_EQ(heading->text(), "Select a Show");
    EXPECT_EQ(heading->frame(), CGRectMake(56, 29, 207, 67));
    EXPECT_EQ(heading->font(), UIFont::boldSystemFontOfSize(24));
}

struct Opening {
    int row;
    const char* title;
    const char* path;
};

TEST_F(CatalogueScreensTest, ATapThroughTheShineOpensTheShowsPage) {
    auto screen = show<TVShowsViewController>();
    ASSERT_EQ(screen->tableView()->numberOfRowsInSection(0), 146);
    for (const Opening& opening : {Opening{0, "24", "/tvshows/24.html"},
                                   {9, "Better Off Ted", "/tvshows/boondocks.html"},
                                   {29, "Community", "/db/showthread.php?p=981&posted=1#post981"},
                                   {145, "WWE PPV Wrestling", "/tvshows/wwe.html"}}) {
        SCOPED_TRACE(opening.row);
        selectRow(*screen->tableView(), opening.row);
        ASSERT_NE(browser(), nullptr);
        EXPECT_EQ(browser()->navigationBarTitle(), opening.title);
        EXPECT_EQ(browser()->URL()->absoluteString(),
                  std::string("http://vistrel.example") + opening.path);
        EXPECT_EQ(screen->tableView()->indexPathForSelectedRow(), (NSIndexPath{0, opening.row}));
        goBack();
        EXPECT_EQ(screen->tableView()->indexPathForSelectedRow(), std::nullopt);
    }
    EXPECT_EQ(screen->tvShowList()[40].URL, "http://vistrel.example/db/showthread.php?t=365");
}

TEST_F(CatalogueScreensTest, NoBackgroundIsStretched) {
    deterministicHost().host.resourcePath = VISTREL_BUNDLE_DIR;
    const auto expectNatural = [](const UIView& view) {
        const auto& picture = dynamic_cast<const UIImageView&>(view);
        ASSERT_NE(picture.image(), nullptr);
        EXPECT_EQ(picture.image()->size(), picture.frame().size)
            << "what is drawn for a place must stand there";
    };
    auto shows = show<TVShowsViewController>();
    expectNatural(*shows->view()->subviews()[0]);
    expectNatural(*shows->view()->subviews()[2]);
    navigation->view()->removeFromSuperview();
    auto movies = show<MoviesViewController>();
    expectNatural(*movies->view()->subviews()[0]);
}

TEST_F(CatalogueScreensTest, NoRowFadesOutOnReturn) {
    auto screen = show<TVShowsViewController>();
    selectRow(*screen->tableView(), 1);
    auto cell = screen->tableView()->cellForRowAtIndexPath({0, 1});
    screen->viewDidAppear(true);
    EXPECT_FALSE(cell->isHighlighted());
    EXPECT_EQ(cell->subviews().front()->presentationState().alpha, 0);
    goBack();
}

TEST_F(CatalogueScreensTest, EachShowIsPaintedOnceOnAWayThroughTheListByAHandfulOfCells) {
    auto screen = show<TVShowsViewController>();
    UITableView& table = *screen->tableView();
    support::PaintingCounter counter(265, 44);
    std::set<UITableViewCell*> cells;
    const double end = table.contentSize().height - 155;
    ASSERT_EQ(end, 146 * 44 - 155);
    for (double y = 0; y <= end; y += 3) {
        table.setContentOffset({0, std::min(y, end)});
        SceneWalk::walk(window(), counter);
        for (const auto& cell : table.visibleCells())
            cells.insert(cell.get());
    }
    table.setContentOffset({0, end});
    SceneWalk::walk(window(), counter);
    EXPECT_EQ(table.indexPathsForVisibleRows().back(), (NSIndexPath{0, 145}));
    EXPECT_EQ(counter.paintings(), 146U);
    EXPECT_LE(cells.size(), 155U / 44 + 1 + 2);
}

TEST_F(CatalogueScreensTest, ARowCanBeTappedAfterASlowDragHasComeToRest) {
    auto screen = show<MoviesViewController>();
    touchDown({150, 400});
    for (int step = 1; step <= 72; ++step) {
        advance(1.0 / 60);
        touchMove({150, 400 - 150.0 * step / 72});
        renderViewToBitmap(window(), 1);
    }
    touchUp({150, 250});
    settle();
    settle();
    EXPECT_FALSE(screen->tableView()->isDecelerating());
    EXPECT_FALSE(screen->tableView()->isDragging());
    tap({160, 281});
    settle();
    ASSERT_TRUE(browser());
    goBack();
}

TEST_F(CatalogueScreensTest, RowsAreMadeReadyFromTheirRecords) {
    auto screen = show<TVShowsViewController>();
    const auto cell = std::dynamic_pointer_cast<TVShowsTableViewCell>(
        screen->tableView()->cellForRowAtIndexPath({0, 1}));
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->tvShowText(), "30 Rock");
    EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::DisclosureIndicator);
    EXPECT_EQ(cell->reuseIdentifier(), "Cell");
    EXPECT_EQ(cell->frame(), CGRectMake(0, 44, 265, 44));
}

TEST_F(CatalogueScreensTest, TheMoviePagesAreTallCards) {
    auto screen = show<MoviesViewController>();
    EXPECT_EQ(screen->title(), "Movies");
    EXPECT_EQ(screen->navigationItem().title(), "Movies");
    UITableView& table = *screen->tableView();
    EXPECT_EQ(table.frame(), CGRectMake(0, 0, 320, 416));
    EXPECT_EQ(table.numberOfRowsInSection(0), 29);
    EXPECT_EQ(table.rectForRowAtIndexPath({0, 28}), CGRectMake(0, 28 * 160, 320, 160));
    const auto cell =
        std::dynamic_pointer_cast<MoviesTableViewCell>(table.cellForRowAtIndexPath({0, 2}));
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->topTextLabel(), "Now Showing:");
    EXPECT_EQ(cell->bottomTextLabel(), "\"#\" Movies");
    EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::None);
    for (const Opening& opening :
         {Opening{2, "\"#\" Movies", "/mdb/number.html"}, {28, "\"Z\" Movies", "/mdb/z.html"}}) {
        selectRow(table, opening.row);
        ASSERT_NE(browser(), nullptr);
        EXPECT_EQ(browser()->navigationBarTitle(), opening.title);
        EXPECT_EQ(browser()->URL()->absoluteString(),
                  std::string("http://vistrel.example") + opening.path);
        goBack();
        EXPECT_EQ(table.indexPathForSelectedRow(), std::nullopt);
    }
}

TEST_F(CatalogueScreensTest, AScreenWhoseViewWentBuildsItAfresh) {
    auto screen = show<MoviesViewController>();
    auto table = screen->tableView();
    navigation->popViewControllerAnimated(false);
    settle();
    screen->didReceiveMemoryWarning();
    EXPECT_EQ(table->dataSource(), nullptr);
    EXPECT_EQ(table->delegate(), nullptr);
    navigation->pushViewController(screen, false);
    settle();
    EXPECT_NE(screen->tableView(), table);
    EXPECT_EQ(screen->tableView()->numberOfRowsInSection(0), 29);
    EXPECT_EQ(screen->moviesList().size(), 29U);
}

}
}
