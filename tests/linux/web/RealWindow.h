#pragma once
#include "platform/linux/main/LinuxHost.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/web/TestPageServer.h"
#include "tests/support/TemporaryFolder.h"

#include <gtk/gtk.h>

namespace vistrel {

/// A navigation stack in a real window, on the real host with a device root of its own, and a
/// server on loopback.
class RealWindow : public testing::Test {
protected:
    static void SetUpTestSuite() {
        setenv("VISTREL_MODULES", MODULES_FOLDER, 1);
        ASSERT_TRUE(gtk_init_check()) << "no display";
    }

    RealWindow() {
        host_.setDisplay(&shown_.screen());
        navigation_ =
            UINavigationController::withRootViewController(std::make_shared<UIViewController>());
        window_ = std::make_shared<UIWindow>();
        window_->addSubview(navigation_->view());
        window_->makeKeyAndVisible();
        shown_.present();
    }
    ~RealWindow() override {
        navigation_->view()->removeFromSuperview();
        navigation_.reset();
        window_.reset();
        UIApplication::resetSharedApplication();
    }

    support::TemporaryFolder root_;
    LinuxHost host_{root_.path()};
    PhoneWindow shown_{1};
    TestPageServer server_;
    std::shared_ptr<UINavigationController> navigation_;
    std::shared_ptr<UIWindow> window_;
};

}
