#pragma once
#include "platform/graphics/CGGeometry.h"

#include <memory>

namespace vistrel {
class UIView;

enum class UITouchPhase { Began, Moved, Ended, Cancelled };

/// One finger or the mouse's first button, from down to up.
class UITouch {
public:
    UITouchPhase phase = UITouchPhase::Began;
    double timestamp = 0;   ///< monotonic seconds
    CGPoint windowLocation; ///< on the screen, points
    CGPoint startWindowLocation;
    int tapCount = 1;
    std::weak_ptr<UIView> view; ///< the view that was hit

    /// Where it is in `view`'s coordinates.
    CGPoint locationInView(const UIView& inView) const;
};

}
