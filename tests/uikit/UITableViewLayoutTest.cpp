#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UITableViewCellLayout.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

using Span = UITableViewLayout::Span;

/// A header of 20 over three rows of 10; no header, no rows; a header of 30 over rows of 5, 7, 9.
UITableViewLayout aLayout() {
    UITableViewLayout layout;
    layout.clear();
    layout.beginSection(20);
    layout.appendRows(3, 10);
    layout.beginSection(0);
    layout.beginSection(30);
    layout.appendRow(5);
    layout.appendRow(7);
    layout.appendRow(9);
    return layout;
}

TEST(UITableViewLayoutTest, RowsAndHeadersFollowOneAnother) {
    const auto layout = aLayout();
    EXPECT_EQ(layout.contentHeight(), 20 + 30 + 30 + 21);
    EXPECT_EQ(layout.header(0), (Span{0, 20}));
    EXPECT_EQ(layout.row({0, 2}), (Span{40, 10}));
    EXPECT_EQ(layout.section(1), (Span{50, 0}));
    EXPECT_EQ(layout.header(2), (Span{50, 30}));
    EXPECT_EQ(layout.row({2, 1}), (Span{85, 7}));
    EXPECT_EQ(layout.rowCount(), 6);
    EXPECT_EQ(layout.next({0, 2}), (NSIndexPath{2, 0})) << "past the empty section";
    EXPECT_EQ(layout.previous({2, 0}), (NSIndexPath{0, 2}));
    EXPECT_EQ(layout.previous({0, 0}), std::nullopt);
    EXPECT_EQ(layout.next({2, 2}), std::nullopt);
}

TEST(UITableViewLayoutTest, ARowIsFoundByItsPlace) {
    const auto layout = aLayout();
    const std::tuple<double, std::optional<NSIndexPath>, std::optional<NSIndexPath>> cases[] = {
        {-5, {}, NSIndexPath{0, 0}},
        {0, {}, NSIndexPath{0, 0}}, // in the header
        {20, NSIndexPath{0, 0}, NSIndexPath{0, 0}},
        {29.9, NSIndexPath{0, 0}, NSIndexPath{0, 0}},
        {30, NSIndexPath{0, 1}, NSIndexPath{0, 1}},
        {49, NSIndexPath{0, 2}, NSIndexPath{0, 2}},
        {50, {}, NSIndexPath{2, 0}}, // in the second header
        {80, NSIndexPath{2, 0}, NSIndexPath{2, 0}},
        {84.5, NSIndexPath{2, 0}, NSIndexPath{2, 0}},
        {85, NSIndexPath{2, 1}, NSIndexPath{2, 1}},
        {100.5, NSIndexPath{2, 2}, NSIndexPath{2, 2}},
        {101, {}, {}},
        {1e9, {}, {}},
    };
    for (const auto& [y, row, below] : cases) {
        EXPECT_EQ(layout.rowAt(y), row) << y;
        EXPECT_EQ(layout.firstRowBelow(y), below) << y;
    }
    EXPECT_EQ(UITableViewLayout().firstRowBelow(0), std::nullopt);
}

TEST(UITableViewCellLayoutTest, TheTextMakesRoomForTheControlsOfEachMode) {
    const auto layout = UITableViewCellLayout::forInput;
    const UITableViewCellLayoutInput plain{{320, 44}, {29, 29}, true};
    EXPECT_EQ(layout(plain).image, CGRectMake(10, 8, 29, 29));
    EXPECT_EQ(layout(plain).text, CGRectMake(49, 0, 241, 44));
    EXPECT_EQ(layout(plain).accessory, CGRectMake(300, 15, 10, 14));
    EXPECT_LE(layout(plain).deleteCircle.maxX(), 0) << "waits beside the row";
    EXPECT_GE(layout(plain).confirmation.minX(), 320);
    const UITableViewCellLayoutInput editing{{320, 44}, {29, 29}, true, true};
    EXPECT_EQ(layout(editing).deleteCircle, CGRectMake(10, 9, 26, 26));
    EXPECT_EQ(layout(editing).image.minX(), 46);
    const UITableViewCellLayoutInput confirming{{320, 44}, {29, 29}, true, true, true, 60};
    EXPECT_EQ(layout(confirming).confirmation, CGRectMake(250, 6, 60, 32));
    EXPECT_EQ(layout(confirming).text.maxX(), 240);
    EXPECT_EQ(layout({{320, 20}, {60, 76}}).image.size, (CGSize{15, 19})) << "made smaller";
}

}
}
