#include "platform/uikit/UIWindow.h"

#include "platform/uikit/UIApplication.h"

namespace vistrel {

UIWindow::UIWindow(CGRect frame)
    : UIView(frame, this) {}

UIWindow::~UIWindow() = default;

void UIWindow::makeKeyWindow() {
    UIApplication::sharedApplication().setKeyWindow(*this);
}

void UIWindow::makeKeyAndVisible() {
    UIApplication::sharedApplication().showWindow(*this);
    makeKeyWindow();
}

void UIWindow::setWindowLevel(double level) {
    windowLevel_ = level;
    if (superview() != nullptr)
        UIApplication::sharedApplication().showWindow(*this);
}

}
