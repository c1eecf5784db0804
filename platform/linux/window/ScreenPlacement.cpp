#include "platform/linux/window/ScreenPlacement.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr CGSize kScreen = ScreenPlacement::kScreen;

/// Turns the portrait screen so that a view in that orientation is upright, with its origin in the
/// corner.
CGAffineTransform uprightTurn(UIInterfaceOrientation orientation) {
    switch (orientation) {
    case UIInterfaceOrientation::LandscapeRight:
        return {0, -1, 1, 0, 0, kScreen.width};
    case UIInterfaceOrientation::LandscapeLeft:
        return {0, 1, -1, 0, kScreen.height, 0};
    default:
        return {};
    }
}

}

ScreenPlacement::ScreenPlacement(CGSize window, UIInterfaceOrientation orientation) {
    const bool lies = UIInterfaceOrientationIsLandscape(orientation);
    const CGSize shown = lies ? CGSize{kScreen.height, kScreen.width} : kScreen;
    unitsPerPoint_ =
        std::max(0.01, std::min(window.width / shown.width, window.height / shown.height));
    const double left = std::floor((window.width - shown.width * unitsPerPoint_) / 2);
    const double top = std::floor((window.height - shown.height * unitsPerPoint_) / 2);
    transform_ = uprightTurn(orientation).concat({unitsPerPoint_, 0, 0, unitsPerPoint_, left, top});
    fillsWindow_ = left == 0 && top == 0 && shown.width * unitsPerPoint_ >= window.width &&
                   shown.height * unitsPerPoint_ >= window.height;
}

}
