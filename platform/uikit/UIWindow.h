#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {

/// A root of views on the screen, in screen coordinates. The application's main window is the key
/// window; alerts and sheets have separate windows above it.
class UIWindow : public UIView {
public:
    explicit UIWindow(CGRect frame = CGRectMake(0, 0, 320, 480));
    ~UIWindow() override;

    void makeKeyWindow();
    /// Puts the window on the screen, above windows of its level or lower.
    void makeKeyAndVisible();
    /// 0 for the application's window, under the status bar; higher levels lie above it.
    double windowLevel() const { return windowLevel_; }
    void setWindowLevel(double level);

private:
    double windowLevel_ = 0;
};

inline constexpr double UIWindowLevelNormal = 0;
inline constexpr double UIWindowLevelStatusBar = 1000;
inline constexpr double UIWindowLevelAlert = 2000;

}
