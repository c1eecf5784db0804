#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIInterfaceOrientation.h"

namespace vistrel {

/// Where the phone's screen stands in the window: as large as fits, in the middle. In landscape
/// the phone is turned by a quarter, so that what it shows is upright.
class ScreenPlacement {
public:
    /// The phone's screen in points, held upright.
    static constexpr CGSize kScreen{320, 480};

    /// `window` in the toolkit's units.
    ScreenPlacement(CGSize window, UIInterfaceOrientation orientation);

    /// Toolkit units per point.
    double unitsPerPoint() const { return unitsPerPoint_; }
    /// From points of the portrait screen to coordinates of the window.
    const CGAffineTransform& transform() const { return transform_; }
    /// Whether it leaves nothing of the window free.
    bool fillsWindow() const { return fillsWindow_; }

private:
    double unitsPerPoint_;
    CGAffineTransform transform_;
    bool fillsWindow_;
};

}
