#include "platform/uikit/UITouch.h"

#include "platform/uikit/UIView.h"

namespace vistrel {

CGPoint UITouch::locationInView(const UIView& inView) const {
    return inView.transformToRoot().inverted().apply(windowLocation);
}

}
