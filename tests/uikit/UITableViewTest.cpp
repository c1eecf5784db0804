#include "platform/uikit/UIEventDispatcher.h"
#include "tests/uikit/TableTest.h"

namespace vistrel {
namespace {

using UITableViewTest = TableTest;

TEST_F(UITableViewTest, AHundredThousandRowsNeedOnlyTheVisibleCellsPlusTwo) {
    fill(100000);
    EXPECT_EQ(table->contentSize().height, 4000000);
    EXPECT_EQ(CountingCell::painted, 10);
    for (double y = 1; y <= 400; ++y)
        scrollTo(y);
    EXPECT_EQ(CountingCell::painted, 20) << "each row that comes on screen once";
    for (double y = 399; y >= 0; --y)
        scrollTo(y);
    EXPECT_EQ(CountingCell::painted, 30);
    for (const auto& [y, first, cells] :
         {std::tuple{3999600.0, "99990", 10U}, {2000013.0, "50000", 11U}, {0.0, "0", 10U}}) {
        scrollTo(y);
        EXPECT_EQ(table->visibleCells().size(), cells);
        EXPECT_EQ(shown().front(), first);
    }
    EXPECT_LE(CountingCell::made, 10 + 2);
}

TEST_F(UITableViewTest, HeightsAreRequestedOncePerReload) {
    owner.height = 60;
    fill(500);
    EXPECT_EQ(topOf({0, 10}), 600);
    act("drag 100,300 100,100 0.1; show 2");
    EXPECT_EQ(owner.heightsAsked, 500);
    table->reloadData();
    EXPECT_EQ(owner.heightsAsked, 1000);
}

TEST_F(UITableViewTest, AHeaderTakesTheHeightThatIsSetWhileItIsHandedOut) {
    owner.rows = {{}, {"a", "b"}, {"c"}, {"d"}, {"e"}};
    owner.headerHeights = {{0, 75}, {1, 32}, {2, 32}, {3, 50}};
    for (int section = 0; section < 3; ++section)
        owner.headerViews[section] = std::make_shared<UIView>(CGRectMake(0, 15, 320, 15));
    table->reloadData();
    screenshot();
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
    owner.titles = {{0, "First"}, {1, "Second"}};
    table->reloadData();
    const double end = 23 + 800;
    const std::tuple<double, double, std::optional<double>> cases[] = {{0, 0, {}},
                                                                       {100, 100, {}},
                                                                       {500, 500, end},
                                                                       {end - 23, end - 23, end},
                                                                       {end - 10, end - 23, end},
                                                                       {-50, 0, {}}};
    for (const auto& [offset, top, secondTop] : cases) {
        SCOPED_TRACE(offset);
        scrollTo(offset);
        ASSERT_NE(table->headerViewForSection(0), nullptr);
        EXPECT_EQ(table->headerViewForSection(0)->frame(), CGRectMake(0, top, 320, 23));
        const auto second = table->headerViewForSection(1);
        ASSERT_EQ(second != nullptr, secondTop.has_value());
        EXPECT_EQ(second ? second->frame().minY() : 0, secondTop.value_or(0));
    }
    scrollTo(end + 100);
    EXPECT_EQ(table->headerViewForSection(0), nullptr);
    EXPECT_EQ(table->headerViewForSection(1)->frame().minY(), end + 100);
    EXPECT_THAT(labels(UIAccessibilityRole::Heading, *table), ElementsAre("Second"));
}

TEST_F(UITableViewTest, ATapSelectsOneRowAndTellsTheDelegate) {
    fill(50);
    expectSteps({{"tap 100,100", "lit 2 selected 2"}});
    EXPECT_TRUE(cell(2).isSelected());
    scrollTo(1000);
    EXPECT_EQ(state(), "at 1000") << "a reused cell keeps no state";
    scrollTo(0);
    expectSteps({{"", "lit 2"}, {"tap 100,10", "lit 0 selected 0"}});
    EXPECT_EQ(table->indexPathForSelectedRow(), (NSIndexPath{0, 0}));
    table->deselectRowAtIndexPath({0, 0}, false);
    EXPECT_EQ(state(), "");
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
}

TEST_F(UITableViewTest, AFingerThatRestsHighlightsAndOneThatScrollsOrStopsTheListDoesNotSelect) {
    fill(500);
    expectSteps({{"down 100,100", ""},
                 {"wait 0.2", "lit 2"},
                 {"move 100,91", "lit 2"},
                 {"move 100,89", "dragged"},
                 {"up 100,89; wait 1", ""},
                 {"down 100,100; move 100,80; wait 0.5", "dragged"},
                 {"up 100,80; wait 1", ""},
                 {"drag 100,300 100,200 0.05; show 0.1", "at 265 moving"},
                 {"tap 100,200; show 0.5", "at 265"},
                 {"tap 100,200", "at 265 lit 11 selected 11"}});
}

TEST_F(UITableViewTest, AReloadKeepsTheOffsetAndClearsTheSelection) {
    fill(100);
    scrollTo(1000);
    act("tap 100,100");
    owner.rows[0][25] = "changed";
    table->reloadData();
    expectSteps({{"show 0.1", "at 1000 selected 27"}});
    EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(shown().front(), "changed");
    fill(15);
    EXPECT_EQ(state(), "at 200") << "no further than the rows go";
    act("key End");
    fill(12);
    EXPECT_EQ(state(), "at 80 lit 11") << "and the keyboard neither";
}

TEST_F(UITableViewTest, AnOwnerThatHasGoneIsNotCalled) {
    fill(100);
    owner.deletes = true;
    table->setEditing(true, false);
    const std::weak_ptr<RowsOwner> gone = sharedOwner;
    sharedOwner.reset();
    ASSERT_TRUE(gone.expired());
    act("tap 160,100; key End; show 0.5");
    table->setEditing(false, true);
    act("drag 300,100 100,100 0.1; key Delete");
    table->deleteRowsAtIndexPaths({{0, 0}}, UITableViewRowAnimation::Top);
    screenshot();
    EXPECT_EQ(table->dataSource(), nullptr);
    EXPECT_EQ(table->numberOfSections(), 0);
    EXPECT_THAT(table->visibleCells(), IsEmpty());
}

TEST_F(UITableViewTest, RowsAreAsWideAsTheTableWithSeparatorsBetweenThemAndTheFooterBelow) {
    const auto footer = std::make_shared<UIView>(CGRectMake(0, 0, 320, 10));
    table->setTableFooterView(footer);
    fill(3);
    table->setSeparatorColor(UIColor::redColor());
    screenshot();
    EXPECT_EQ(colors(screen(), "100,39 100,40"), "red white");
    table->setSeparatorStyle(UITableViewCellSeparatorStyle::None);
    EXPECT_EQ(colors(screen(), "100,39"), "white");
    table->setFrame(CGRectMake(0, 0, 480, 200));
    screenshot();
    EXPECT_EQ(cell(1).frame(), CGRectMake(0, 40, 480, 40));
    EXPECT_EQ(table->contentSize().height, 120 + 10);
    EXPECT_EQ(footer->frame().minY(), 120);
}

TEST_F(UITableViewTest, TheKeyboardMovesAHighlightScrollsAndSelects) {
    fill(100);
    expectSteps({{"key Down", "lit 0"},
                 {"key Down 12; show 0.5", "at 120 lit 12"}, // just far enough
                 {"key Up", "at 120 lit 11"},
                 {"key Enter", "at 120 lit 11 selected 11"},
                 {"key End; show 0.5", "at 3600 lit 99"},
                 {"key PageUp; show 0.5", "at 3560 lit 89"},
                 {"key Home; show 0.5", "lit 0"},
                 {"down 100,300", ""}, // a finger takes over
                 {"up 100,300", "lit 7 selected 7"}});
    find(UIAccessibilityRole::Row, "3")->accessibilityActivate();
    EXPECT_EQ(state(), "lit 3 selected 3") << "as a screen reader does";
}

TEST_F(UITableViewTest, ALongPressTheSecondButtonAndTheMenuKeyShowARowsMenu) {
    owner.deletes = true;
    owner.hasMenus = true;
    fill(20);
    expectSteps({{"down 100,100; wait 0.4", "lit 2"},
                 {"wait 0.2", "menu 2"},
                 {"up 100,100", ""},
                 {"down 100,60; wait 0.6; up 100,60", "lit 1 selected 1"}, // has none
                 {"second 100,140", "lit 1 menu 3"},
                 {"second 100,60", "lit 1"},
                 {"key Menu", "lit 1"}, // no row has the keys
                 {"key Down; key Menu", "lit 1 lit 2 menu 2"}});
    // No long press: a shake, a scroll, a swipe, a second press after a short one.
    expectSteps({{"down 100,100; move 112,100; wait 0.6", "lit 1 lit 2"},
                 {"up 112,100", "lit 2 selected 2"},
                 {"down 100,100; move 100,80; wait 0.6; up 100,80; show 2", "lit 2"},
                 {"down 200,140; move 120,144; wait 0.6; up 120,144", "lit 2 offers 3"},
                 {"second 100,200", "lit 2 menu 5"}, // the offer is withdrawn
                 {"down 100,190; wait 0.3; up 100,190; down 100,190; wait 0.3; up 100,190",
                  "lit 4 selected 4 selected 4"}});
    table->setEditing(true, false);
    expectSteps({{"down 100,100; wait 0.6; up 100,100; second 100,100", "lit 4"}});
}

TEST_F(UITableViewTest, TheMouseTakesARowsFileOutUnlessItScrollsOrEdits) {
    owner.deletes = true;
    owner.hasFiles = true;
    fill(20);
    EXPECT_EQ(application().events().dragFileOut(), std::nullopt) << "no button is down";
    const std::tuple<const char*, std::optional<std::string>, const char*> cases[] = {
        {"down 300,100; move 319,100", "/2", ""},
        {"down 200,140; move 100,142", "/3", ""}, // a swipe, whose offer is withdrawn
        {"down 200,140; move 200,120; move 319,120", std::nullopt, ""},
        {"down 300,60; move 319,60", std::nullopt, "lit 1 selected 1"},
    };
    for (const auto& [inputs, file, after] : cases) {
        act(inputs);
        EXPECT_EQ(application().events().dragFileOut(), file) << inputs;
        act("up 319,100; wait 0.3");
        EXPECT_EQ(state(), after) << inputs;
    }
}

}
}
