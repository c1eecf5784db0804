#include "tests/uikit/TableTest.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UITableViewEditingTest : public TableTest {
protected:
    UITableViewEditingTest() {
        owner.deletes = true;
        fill(20);
    }
    void swipeRow(int row) {
        const double y = topOf({0, row}) + 20 - table->contentOffset().y;
        swipe({200, y}, {120, y + 4});
        play(0.5);
    }
    void deleteRow(int row) {
        swipeRow(row);
        tapButton("Delete");
        play(1);
    }
    std::vector<std::string> without(std::initializer_list<int> gone) {
        std::vector<std::string> texts;
        for (int row = 0; row < 20; ++row) {
            if (std::ranges::find(gone, row) == gone.end())
                texts.push_back(std::to_string(row));
        }
        return texts;
    }
};

TEST_F(UITableViewEditingTest, ASwipeOffersToDeleteAndTheButtonDeletes) {
    swipeRow(3);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), (NSIndexPath{0, 3}));
    EXPECT_TRUE(cell(3).showingDeleteConfirmation());
    EXPECT_FALSE(cell(3).isEditing());
    EXPECT_THAT(buttons(), ElementsAre("Delete"));
    EXPECT_THAT(owner.selected, IsEmpty());
    EXPECT_EQ(table->contentOffset().y, 0);
    const auto button = find(UIAccessibilityRole::Button, "Delete");
    EXPECT_EQ(button->frame().maxX(), 310);
    EXPECT_GE(button->frame().size.width, 60);
    EXPECT_EQ(cell(3).subviews().back(), button) << "above everything in the cell";

    tapButton("Delete");
    EXPECT_THAT(owner.committed, ElementsAre(NSIndexPath{0, 3}));
    EXPECT_EQ(table->numberOfRowsInSection(0), 19);
    play(1);
    EXPECT_EQ(owner.rows[0], without({3}));
    EXPECT_THAT(shown(), ElementsAre("0", "1", "2", "4", "5", "6", "7", "8", "9", "10"));
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    EXPECT_THAT(buttons(), IsEmpty());
}

TEST_F(UITableViewEditingTest, AReloadOrATouchElsewhereOnlyWithdrawsTheOffer) {
    swipeRow(3);
    table->reloadData();
    frame();
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    EXPECT_THAT(buttons(), IsEmpty());
    swipeRow(3);
    tap({100, 20});
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    EXPECT_FALSE(cell(3).showingDeleteConfirmation());
    EXPECT_THAT(owner.selected, IsEmpty());
    tap({100, 20});
    EXPECT_THAT(owner.selected, ElementsAre(NSIndexPath{0, 0}));
    EXPECT_THAT(owner.committed, IsEmpty());
}

TEST_F(UITableViewEditingTest, OnlyDeletableRowsAreOffered) {
    owner.fixedRows = {{0, 3}};
    swipeRow(3);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    owner.deletes = false;
    swipeRow(4);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
}

TEST_F(UITableViewEditingTest, ADragUpAndAcrossScrollsAndASmallShakeStillSelects) {
    swipe({200, 300}, {140, 220});
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    EXPECT_GT(table->contentOffset().y, 0);
    play(3);
    touchDown({200, 100});
    touchMove({188, 100});
    touchUp({188, 100});
    EXPECT_EQ(owner.selected.size(), 1U);
}

TEST_F(UITableViewEditingTest, EditingShowsACircleOnEachRowThatCanBeDeleted) {
    owner.fixedRows = {{0, 1}};
    tap({100, 100});
    owner.selected.clear();
    table->setEditing(true, true);
    play(0.5);
    EXPECT_TRUE(cell(0).isEditing());
    EXPECT_FALSE(cell(1).isEditing());
    EXPECT_THAT(buttons(), testing::Contains("Delete 0"));
    EXPECT_THAT(buttons(), testing::Not(testing::Contains("Delete 1")));
    const auto circle = find(UIAccessibilityRole::Button, "Delete 0");
    EXPECT_EQ(circle->frame(), CGRectMake(10, 7, 26, 26));
    tap({150, 20});
    EXPECT_THAT(owner.selected, IsEmpty()) << "editing selects nothing";

    scrollTo(300);
    EXPECT_TRUE(cell(17).isEditing()) << "so are rows that scroll into view";
    table->setContentOffset({0, 0});
    table->setEditing(false, true);
    play(0.5);
    EXPECT_FALSE(cell(0).isEditing());
    EXPECT_THAT(buttons(), IsEmpty());
    swipeRow(2);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), (NSIndexPath{0, 2}));
}

TEST_F(UITableViewEditingTest, TheCircleOffersAndTheButtonDeletesWhileEditing) {
    table->setEditing(true, true);
    play(0.5);
    tapButton("Delete 5");
    play(0.5);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), (NSIndexPath{0, 5}));
    EXPECT_TRUE(cell(5).isEditing());
    tapButton("Delete 2"); // a touch elsewhere only withdraws the offer
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    play(0.5);
    tapButton("Delete 2");
    play(0.5);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), (NSIndexPath{0, 2}));
    tapButton("Delete");
    play(1);
    EXPECT_THAT(owner.committed, ElementsAre(NSIndexPath{0, 2}));
    EXPECT_TRUE(table->isEditing());
    EXPECT_TRUE(cell(2).isEditing());
    EXPECT_FALSE(cell(2).showingDeleteConfirmation());
}

TEST_F(UITableViewEditingTest, RowsBelowADeletedOneMoveUpAndItsCellIsReused) {
    scrollTo(15);
    const int made = CountingCell::made;
    auto leaving = table->cellForRowAtIndexPath({0, 3});
    auto below = table->cellForRowAtIndexPath({0, 4});
    swipeRow(3);
    tapButton("Delete");
    frame();
    advance(0.15);
    const double middle = below->presentationState().center.y;
    EXPECT_LT(middle, 180);
    EXPECT_GT(middle, 140);
    EXPECT_LT(leaving->presentationState().center.y, 140) << "slides up under the row above";
    EXPECT_EQ(below->frame(), CGRectMake(0, 120, 320, 40)) << "final at once for who asks";
    EXPECT_EQ(table->indexPathForCell(*leaving), std::nullopt);
    play(1);
    EXPECT_TRUE(leaving->isHidden());
    EXPECT_LE(CountingCell::made, made + 1);
    scrollTo(100);
    EXPECT_LE(CountingCell::made, made + 1);
    for (const auto& each : table->visibleCells())
        EXPECT_EQ(each->alpha(), 1);
}

TEST_F(UITableViewEditingTest, DeletingTheLastRowKeepsTheOffsetInRange) {
    scrollTo(400);
    deleteRow(19);
    EXPECT_EQ(table->contentSize().height, 760);
    EXPECT_EQ(table->contentOffset().y, 360);
    EXPECT_EQ(shown().front(), "9");
    EXPECT_EQ(shown().back(), "18");
}

TEST_F(UITableViewEditingTest, SelectionFollowsItsRowThroughADeletion) {
    table->selectRowAtIndexPath({0, 5}, false);
    owner.rows[0].erase(owner.rows[0].begin() + 2);
    table->deleteRowsAtIndexPaths({{0, 2}}, UITableViewRowAnimation::Top);
    EXPECT_EQ(table->indexPathForSelectedRow(), (NSIndexPath{0, 4}));
    frame();
    EXPECT_TRUE(cell(4).isSelected());
    EXPECT_EQ(cell(4).accessibilityLabel(), "5");
    owner.rows[0].erase(owner.rows[0].begin() + 4);
    table->deleteRowsAtIndexPaths({{0, 4}}, UITableViewRowAnimation::Top);
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    play(1);
}

TEST_F(UITableViewEditingTest, ASecondDeletionMayBeginDuringTheFirst) {
    swipeRow(3);
    tapButton("Delete");
    advance(0.1);
    owner.rows[0].erase(owner.rows[0].begin());
    table->deleteRowsAtIndexPaths({{0, 0}}, UITableViewRowAnimation::Top);
    play(1);
    EXPECT_EQ(owner.rows[0], without({0, 3}));
    EXPECT_EQ(shown().front(), "1");
    EXPECT_EQ(cell(0).frame(), CGRectMake(0, 0, 320, 40));
    EXPECT_EQ(table->visibleCells().size(), 10U);
}

TEST_F(UITableViewEditingTest, TheKeyboardOffersDeletesAndWithdraws) {
    press(UIKeyCode::Down);
    press(UIKeyCode::Down);
    ASSERT_TRUE(press(UIKeyCode::Delete));
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), (NSIndexPath{0, 1}));
    ASSERT_TRUE(press(UIKeyCode::Escape));
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    EXPECT_FALSE(press(UIKeyCode::Escape)) << "the next one is for the screen";
    press(UIKeyCode::Delete);
    press(UIKeyCode::Up);
    EXPECT_EQ(table->indexPathForDeleteConfirmation(), std::nullopt);
    press(UIKeyCode::Down);
    press(UIKeyCode::Delete);
    ASSERT_TRUE(press(UIKeyCode::Enter));
    play(1);
    EXPECT_EQ(owner.rows[0], without({1}));
    EXPECT_THAT(owner.selected, IsEmpty());
}

}
}
