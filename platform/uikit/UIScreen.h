#pragma once
#include "platform/graphics/CGGeometry.h"

namespace vistrel {

/// The phone's screen: 320 x 480 points.
class UIScreen {
public:
    static UIScreen& mainScreen();
    CGRect bounds() const;           ///< the whole screen
    CGRect applicationFrame() const; ///< without the status bar when that is visible
    double scale() const;            ///< pixels per point
};

}
