#include "tests/uikit/TableTest.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UITableViewTest : public TableTest {};

TEST_F(UITableViewTest, AHundredThousandRowsNeedOnlyTheVisibleCellsPlusTwo) {
    fill(100000);
    EXPECT_EQ(table->contentSize().height, 4000000);
    for (double y = 0; y < 4000; y += 7)
        scrollTo(y);
    for (const double y : {3999600.0, 2000013.0, 0.0, 1234567.0}) {
        scrollTo(y);
        EXPECT_EQ(table->visibleCells().size(), y == 0 || y == 3999600 ? 10U : 11U);
    }
    EXPECT_LE(CountingCell::made, 10 + 2);
    EXPECT_EQ(shown().front(), "30864");
}

TEST_F(UITableViewTest, ARowIsPaintedOnceEachTimeItComesOnScreen) {
    fill(1000);
    EXPECT_EQ(CountingCell::painted, 10);
    for (double y = 1; y <= 400; ++y)
        scrollTo(y);
    EXPECT_EQ(CountingCell::painted, 20);
    for (double y = 399; y >= 0; --y)
        scrollTo(y);
    EXPECT_EQ(CountingCell::painted, 30);
}

TEST_F(UITableViewTest, HeightsAreRequestedOncePerReload) {
    owner.height = 60;
    fill(500);
    EXPECT_EQ(owner.heightsAsked, 500);
    EXPECT_EQ(topOf({0, 10}), 600);
    swipe({100, 300}, {100, 100});
    play(2);
    EXPECT_EQ(owner.heightsAsked, 500);
    table->reloadData();
    EXPECT_EQ(owner.heightsAsked, 1000);
}

TEST_F(UITableViewTest, AHeaderTakesTheHeightThatIsSetWhileItIsHandedOut) {
    owner.rows = {{}, {"a", "b"}, {"c"}, {"d"}, {"e"}};
    owner.headerHeights = {75, 32, 32, 50};
    for (int section = 0; section < 3; ++section)
        owner.headerViews.push_back(std::make_shared<UIView>(CGRectMake(0, 15, 320, 15)));
    table->reloadData();
    frame();
    EXPECT_EQ(table->rectForHeaderInSection(0), CGRectMake(0, 0, 320, 75));
    EXPECT_EQ(table->rectForHeaderInSection(1), CGRectMake(0, 75, 320, 32));
    EXPECT_EQ(topOf({1, 0}), 107);
    EXPECT_EQ(table->rectForHeaderInSection(2), CGRectMake(0, 187, 320, 32));
    EXPECT_EQ(table->rectForHeaderInSection(3).size.height, 0) << "neither view nor title";
    EXPECT_EQ(topOf({4, 0}), 299);
    EXPECT_EQ(owner.headerViews[0]->frame(), CGRectMake(0, 0, 320, 75));
    EXPECT_EQ(owner.headerViews[2]->frame(), CGRectMake(0, 187, 320, 32));
    EXPECT_EQ(table->headerViewForSection(3), nullptr);
}

TEST_F(UITableViewTest, HeadersStickAndPushOneAnother) {
    owner.rows = {std::vector<std::string>(20, "a"), std::vector<std::string>(20, "b")};
    owner.titles = {"First", "Second"};
    table->reloadData();
    struct Case {
        double offset;
        double first;
        std::optional<double> second;
    };
    const double end = 23 + 800;
    for (const Case& each : {Case{0, 0, {}},
                             {100, 100, {}},
                             {500, 500, end},
                             {end - 23, end - 23, end},
                             {end - 10, end - 23, end},
                             {-50, 0, {}}}) {
        SCOPED_TRACE(each.offset);
        scrollTo(each.offset);
        ASSERT_NE(table->headerViewForSection(0), nullptr);
        EXPECT_EQ(table->headerViewForSection(0)->frame(), CGRectMake(0, each.first, 320, 23));
        const auto second = table->headerViewForSection(1);
        ASSERT_EQ(second != nullptr, each.second.has_value());
        if (second) {
            EXPECT_EQ(second->frame().minY(), *each.second);
        }
    }
    scrollTo(end + 100);
    EXPECT_EQ(table->headerViewForSection(0), nullptr);
    EXPECT_EQ(table->headerViewForSection(1)->frame().minY(), end + 100);
    EXPECT_THAT(labels(UIAccessibilityRole::Heading, *table), ElementsAre("Second"));
}

TEST_F(UITableViewTest, ATapSelectsOneRowAndTellsTheDelegate) {
    fill(50);
    tap({100, 100});
    EXPECT_THAT(owner.selected, ElementsAre(NSIndexPath{0, 2}));
    EXPECT_EQ(table->indexPathForSelectedRow(), (NSIndexPath{0, 2}));
    EXPECT_TRUE(cell(2).isSelected());
    EXPECT_TRUE(cell(2).isHighlighted()) << "self-drawing rows read this";
    scrollTo(1000);
    for (const auto& each : table->visibleCells())
        EXPECT_FALSE(each->isHighlighted()) << "a reused cell keeps no state";
    scrollTo(0);
    EXPECT_TRUE(cell(2).isHighlighted());
    tap({100, 10});
    EXPECT_FALSE(cell(2).isHighlighted());
    EXPECT_TRUE(cell(0).isSelected());
    table->deselectRowAtIndexPath({0, 0}, false);
    EXPECT_FALSE(cell(0).isHighlighted());
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(UITableViewTest, AFingerThatRestsHighlightsAndOneThatScrollsDoesNotSelect) {
    fill(50);
    touchDown({100, 100});
    EXPECT_FALSE(cell(2).isHighlighted());
    advance(0.2);
    EXPECT_TRUE(cell(2).isHighlighted());
    EXPECT_THAT(owner.selected, IsEmpty());
    touchMove({100, 91});
    EXPECT_TRUE(cell(2).isHighlighted());
    touchMove({100, 89});
    EXPECT_FALSE(cell(2).isHighlighted());
    EXPECT_TRUE(table->isDragging());
    touchUp({100, 89});
    advance(1);
    touchDown({100, 100});
    touchMove({100, 80});
    advance(0.5);
    for (const auto& each : table->visibleCells())
        EXPECT_FALSE(each->isHighlighted()) << "scrolled before it was highlighted";
    touchUp({100, 80});
    EXPECT_THAT(owner.selected, IsEmpty());
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(UITableViewTest, ATouchStopsAMovingListAndSelectsNothing) {
    fill(500);
    swipe({100, 300}, {100, 200}, 0.05);
    play(0.1);
    ASSERT_TRUE(table->isDecelerating());
    tap({100, 200});
    play(0.5);
    EXPECT_FALSE(table->isDecelerating());
    EXPECT_THAT(owner.selected, IsEmpty());
    tap({100, 200});
    EXPECT_EQ(owner.selected.size(), 1U) << "the next touch does";
}

TEST_F(UITableViewTest, AReloadKeepsTheOffsetAndClearsTheSelection) {
    fill(100);
    scrollTo(1000);
    tap({100, 100});
    owner.rows[0][25] = "changed";
    table->reloadData();
    frame();
    EXPECT_EQ(table->contentOffset().y, 1000);
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(shown().front(), "changed");
    EXPECT_FALSE(cell(27).isHighlighted());
    owner.rows[0].resize(15);
    table->reloadData();
    frame();
    EXPECT_EQ(table->contentOffset().y, 200) << "no further than the rows go";
}

TEST_F(UITableViewTest, AnOwnerThatHasGoneIsNotCalled) {
    fill(100);
    owner.deletes = true;
    table->setEditing(true, false);
    const std::weak_ptr<RowsOwner> gone = sharedOwner;
    sharedOwner.reset();
    ASSERT_TRUE(gone.expired());
    tap({160, 100});
    press(UIKeyCode::End);
    play(0.5);
    table->setEditing(false, true);
    swipe({300, 100}, {100, 100});
    press(UIKeyCode::Delete);
    table->deleteRowsAtIndexPaths({{0, 0}}, UITableViewRowAnimation::Top);
    frame();
    EXPECT_EQ(table->dataSource(), nullptr);
    EXPECT_EQ(table->numberOfSections(), 0);
    EXPECT_THAT(table->visibleCells(), IsEmpty());
}

TEST_F(UITableViewTest, RowsAreAsWideAsTheTableWithSeparatorsBetweenThemAndTheFooterBelow) {
    const auto footer = std::make_shared<UIView>(CGRectMake(0, 0, 320, 10));
    table->setTableFooterView(footer);
    fill(3);
    table->setSeparatorColor(UIColor::redColor());
    frame();
    EXPECT_EQ(pixelOf(screen(), 100, 39), 0xffff0000U);
    EXPECT_EQ(pixelOf(screen(), 100, 40), 0xffffffffU);
    table->setSeparatorStyle(UITableViewCellSeparatorStyle::None);
    EXPECT_EQ(pixelOf(screen(), 100, 39), 0xffffffffU);
    table->setFrame(CGRectMake(0, 0, 480, 200));
    frame();
    EXPECT_EQ(cell(1).frame(), CGRectMake(0, 40, 480, 40));
    EXPECT_EQ(table->contentSize().height, 120 + 10);
    EXPECT_EQ(footer->frame().minY(), 120);
}

TEST_F(UITableViewTest, TheKeyboardMovesAHighlightScrollsAndSelects) {
    fill(100);
    ASSERT_TRUE(press(UIKeyCode::Down));
    EXPECT_TRUE(cell(0).isHighlighted());
    EXPECT_THAT(owner.selected, IsEmpty());
    for (int step = 0; step < 12; ++step)
        press(UIKeyCode::Down);
    play(0.5);
    EXPECT_TRUE(cell(12).isHighlighted());
    EXPECT_FALSE(cell(11).isHighlighted());
    EXPECT_EQ(table->contentOffset().y, 120) << "just far enough";
    press(UIKeyCode::Up);
    EXPECT_TRUE(cell(11).isHighlighted());
    ASSERT_TRUE(press(UIKeyCode::Enter));
    EXPECT_THAT(owner.selected, ElementsAre(NSIndexPath{0, 11}));
    press(UIKeyCode::End);
    play(0.5);
    EXPECT_EQ(table->contentOffset().y, 3600);
    EXPECT_TRUE(cell(99).isHighlighted());
    press(UIKeyCode::PageUp);
    play(0.5);
    EXPECT_TRUE(cell(89).isHighlighted());
    press(UIKeyCode::Home);
    play(0.5);
    EXPECT_TRUE(cell(0).isHighlighted());
    EXPECT_EQ(table->contentOffset().y, 0);
    touchDown({100, 300});
    EXPECT_FALSE(cell(0).isHighlighted()) << "a finger takes over";
    touchUp({100, 300});
    find(UIAccessibilityRole::Row, "3")->accessibilityActivate();
    EXPECT_EQ(owner.selected.back(), (NSIndexPath{0, 3})) << "as a screen reader does";
}

}
}
