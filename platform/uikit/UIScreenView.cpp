#include "platform/uikit/UIScreenView.h"

namespace vistrel {

UIScreenView::UIScreenView(CGRect frame)
    : UIView(frame) {
    UIView::setBackgroundColor(UIColor::blackColor());
    setClipsToBounds(true);
}

void UIScreenView::turnOff() {
    on_ = false;
    detachSubviews();
}

}
