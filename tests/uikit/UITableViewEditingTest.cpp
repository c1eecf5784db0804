#include "tests/uikit/TableTest.h"

namespace vistrel {
namespace {

class UITableViewEditingTest : public TableTest {
protected:
    UITableViewEditingTest() {
        owner.deletes = true;
        fill(20);
    }
    std::vector<std::string> buttons() { return labels(UIAccessibilityRole::Button, *table); }
    void deleteFromOwner(int row) {
        owner.rows[0].erase(owner.rows[0].begin() + row);
        table->deleteRowsAtIndexPaths({{0, row}}, UITableViewRowAnimation::Top);
    }
    /// Across the fourth row of a list at its top.
    const std::string swipe = "drag 200,140 120,144 0.1; show 0.5";
};

TEST_F(UITableViewEditingTest, ASwipeOffersToDeleteAndTheButtonDeletes) {
    expectSteps({{swipe, "offers 3"}});
    EXPECT_TRUE(cell(3).showingDeleteConfirmation());
    EXPECT_FALSE(cell(3).isEditing());
    EXPECT_THAT(buttons(), ElementsAre("Delete"));
    const auto button = find(UIAccessibilityRole::Button, "Delete");
    EXPECT_EQ(button->frame().maxX(), 310);
    EXPECT_GE(button->frame().size.width, 60);
    EXPECT_EQ(cell(3).subviews().back(), button) << "above everything in the cell";
    expectSteps({{"button Delete", "deleted 3"}});
    EXPECT_EQ(table->numberOfRowsInSection(0), 19);
    act("show 1");
    EXPECT_THAT(shown(), ElementsAre("0", "1", "2", "4", "5", "6", "7", "8", "9", "10"));
    EXPECT_THAT(buttons(), IsEmpty());
}

TEST_F(UITableViewEditingTest, AReloadOrATouchElsewhereOnlyWithdrawsTheOffer) {
    act(swipe);
    table->reloadData();
    expectSteps({{"show 0.1", ""}});
    EXPECT_THAT(buttons(), IsEmpty());
    expectSteps({{swipe, "offers 3"}, {"tap 100,20", ""}, {"tap 100,20", "lit 0 selected 0"}});
    EXPECT_FALSE(cell(3).showingDeleteConfirmation());
}

TEST_F(UITableViewEditingTest, OnlyASwipeAcrossADeletableRowOffersIt) {
    owner.fixedRows = {{0, 3}};
    expectSteps({{swipe, "lit 3 selected 3"},
                 {"down 200,100; move 188,100; up 188,100", "lit 2 selected 2"}, // a small shake
                 {"drag 200,300 140,220 0.1; show 3", "at 400"}});               // up and across
    owner.deletes = false;
    expectSteps({{"drag 200,100 120,104 0.1; show 0.5", "at 400 lit 12 selected 12"}});
}

TEST_F(UITableViewEditingTest, EditingShowsACircleOnEachRowThatCanBeDeleted) {
    owner.fixedRows = {{0, 1}};
    table->setEditing(true, true);
    act("show 0.5");
    EXPECT_TRUE(cell(0).isEditing());
    EXPECT_FALSE(cell(1).isEditing());
    EXPECT_THAT(buttons(), Contains("Delete 0"));
    EXPECT_THAT(buttons(), testing::Not(Contains("Delete 1")));
    EXPECT_EQ(find(UIAccessibilityRole::Button, "Delete 0")->frame(), CGRectMake(10, 7, 26, 26));
    expectSteps({{"tap 150,20", ""}}); // editing selects nothing
    scrollTo(300);
    EXPECT_TRUE(cell(17).isEditing()) << "so are rows that scroll into view";
    scrollTo(0);
    table->setEditing(false, true);
    act("show 0.5");
    EXPECT_FALSE(cell(0).isEditing());
    EXPECT_THAT(buttons(), IsEmpty());
    expectSteps({{swipe, "offers 3"}});
}

TEST_F(UITableViewEditingTest, TheCircleOffersAndTheButtonDeletesWhileEditing) {
    table->setEditing(true, true);
    expectSteps({{"show 0.5; button Delete 5; show 0.5", "offers 5"}});
    EXPECT_TRUE(cell(5).isEditing());
    expectSteps({{"button Delete 2", ""}, // a touch elsewhere only withdraws the offer
                 {"show 0.5; button Delete 2; show 0.5", "offers 2"},
                 {"button Delete; show 1", "deleted 2"}});
    EXPECT_TRUE(table->isEditing());
    EXPECT_TRUE(cell(2).isEditing());
    EXPECT_FALSE(cell(2).showingDeleteConfirmation());
}

TEST_F(UITableViewEditingTest, RowsBelowADeletedOneMoveUpAndItsCellIsReused) {
    scrollTo(15);
    const int made = CountingCell::made;
    auto leaving = table->cellForRowAtIndexPath({0, 3});
    auto below = table->cellForRowAtIndexPath({0, 4});
    act("drag 200,125 120,129 0.1; show 0.5; button Delete; show 0.01; wait 0.15");
    const double middle = below->presentationState().center.y;
    EXPECT_LT(middle, 180);
    EXPECT_GT(middle, 140);
    EXPECT_LT(leaving->presentationState().center.y, 140) << "slides up under the row above";
    EXPECT_EQ(below->frame(), CGRectMake(0, 120, 320, 40)) << "final at once for who asks";
    EXPECT_EQ(table->indexPathForCell(*leaving), std::nullopt);
    act("show 1");
    EXPECT_TRUE(leaving->isHidden());
    scrollTo(100);
    EXPECT_LE(CountingCell::made, made + 1);
    for (const auto& each : table->visibleCells())
        EXPECT_EQ(each->alpha(), 1);
}

TEST_F(UITableViewEditingTest, DeletingTheLastRowKeepsTheOffsetInRange) {
    scrollTo(400);
    expectSteps({{"drag 200,380 120,384 0.1; show 0.5", "at 400 offers 19"},
                 {"button Delete; show 1", "at 360 deleted 19"}});
    EXPECT_EQ(shown().front(), "9");
    EXPECT_EQ(shown().back(), "18");
}

TEST_F(UITableViewEditingTest, SelectionFollowsItsRowThroughADeletion) {
    table->selectRowAtIndexPath({0, 5}, false);
    deleteFromOwner(2);
    EXPECT_EQ(table->indexPathForSelectedRow(), (NSIndexPath{0, 4}));
    expectSteps({{"show 1", "lit 5"}});
    EXPECT_TRUE(cell(4).isSelected());
    deleteFromOwner(4);
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    expectSteps({{"show 1", ""}});
}

TEST_F(UITableViewEditingTest, ASecondDeletionMayBeginDuringTheFirst) {
    act(swipe + "; button Delete; wait 0.1");
    deleteFromOwner(0);
    act("show 1");
    EXPECT_THAT(shown(), ElementsAre("1", "2", "4", "5", "6", "7", "8", "9", "10", "11"));
    EXPECT_EQ(cell(0).frame(), CGRectMake(0, 0, 320, 40));
}

TEST_F(UITableViewEditingTest, TheKeyboardOffersDeletesAndWithdraws) {
    expectSteps({{"key Down 2; key Delete", "lit 1 offers 1"}, {"key Escape", "lit 1"}});
    EXPECT_FALSE(press(UIKeyCode::Escape)) << "the next one is for the screen";
    expectSteps({{"key Delete; key Up", "lit 0"},
                 {"key Down; key Delete; key Enter; show 1", "lit 2 deleted 1"},
                 {"key End; show 1; key Delete; key Enter; show 1", "at 320 lit 18 deleted 18"}});
    EXPECT_EQ(shown()[0], "9");
}

}
}
