#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIWindow.h"
#include "tests/support/HostTest.h"

#include <gmock/gmock.h>
#include <memory>

namespace vistrel {

/// Base of the tests of views on the screen: an application with one window on a fresh host.
class ViewHostTest : public support::HostTest {
protected:
    ViewHostTest() { window->makeKeyAndVisible(); }
    ~ViewHostTest() override {
        window.reset();
        UIApplication::resetSharedApplication();
    }

    UIApplication& application() { return UIApplication::sharedApplication(); }
    /// The screen as it is shown now.
    std::shared_ptr<Bitmap> screenshot() {
        return renderViewToBitmap(application().screenView(), 1);
    }
    /// Composes every frame that is asked for within the time, as a window does; how many they are.
    int framesComposedIn(double seconds) {
        constexpr double kStep = 1.0 / 240;
        const int before = display().frames();
        int seen = before;
        for (double passed = 0; passed < seconds; passed += kStep) {
            advance(kStep);
            if (display().frames() != seen) {
                seen = display().frames();
                screenshot();
            }
        }
        return seen - before;
    }

    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>();
};

}
