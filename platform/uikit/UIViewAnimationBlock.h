#pragma once
#include "platform/uikit/UIViewAnimation.h"

#include <functional>

namespace vistrel {

/// One animation block: its settings and progress.
struct UIViewAnimationBlock {
    double duration = 0.2;
    UIViewAnimationCurve curve = UIViewAnimationCurve::EaseInOut;
    std::function<void(bool)> didStop;

    bool committed = false;
    double start = 0; ///< monotonic; of the movement
    int parts = 0;    ///< properties and transitions that still move
    bool wasCut = false;

    double end() const { return start + duration; }
    /// 0 to 1, eased.
    double progressAt(double now) const;
};

}
