#include "platform/linux/window/ScreenPlacement.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(ScreenPlacementTest, TheScreenIsUprightInTheMiddleAsLargeAsFits) {
    constexpr auto kUpright = UIInterfaceOrientation::Portrait;
    constexpr auto kRight = UIInterfaceOrientation::LandscapeRight;
    constexpr auto kLeft = UIInterfaceOrientation::LandscapeLeft;
    const struct {
        UIInterfaceOrientation orientation;
        CGPoint first; ///< the corner that is seen at the upper left
        CGPoint last;  ///< the one at the lower right
        CGSize window;
        CGRect shown;
        bool fills;
    } cases[] = {
        {kUpright, {0, 0}, {320, 480}, {640, 960}, CGRectMake(0, 0, 640, 960), true},
        {kUpright, {0, 0}, {320, 480}, {801, 480}, CGRectMake(240, 0, 320, 480), false},
        {kRight, {320, 0}, {0, 480}, {960, 640}, CGRectMake(0, 0, 960, 640), true},
        {kRight, {320, 0}, {0, 480}, {480, 400}, CGRectMake(0, 40, 480, 320), false},
        {kLeft, {0, 480}, {320, 0}, {320, 480}, CGRectMake(0, 133, 320, 640.0 / 3), false},
    };
    for (const auto& each : cases) {
        const ScreenPlacement placement(each.window, each.orientation);
        const CGPoint first = placement.transform().apply(each.first);
        const CGPoint last = placement.transform().apply(each.last);
        SCOPED_TRACE(static_cast<int>(each.orientation));
        EXPECT_NEAR(first.x, each.shown.minX(), 1e-9);
        EXPECT_NEAR(first.y, each.shown.minY(), 1e-9);
        EXPECT_NEAR(last.x, each.shown.maxX(), 1e-9);
        EXPECT_NEAR(last.y, each.shown.maxY(), 1e-9);
        EXPECT_EQ(placement.fillsWindow(), each.fills);
    }
}

}
}
