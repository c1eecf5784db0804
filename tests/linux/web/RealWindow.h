#pragma once
#include "platform/linux/main/LinuxHost.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIWindow.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/web/TestPageServer.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace vistrel {

/// A navigation stack in a real window, on the real host with a device root of its own, and a
/// server on loopback.
class RealWindow : public testing::Test {
protected:
    static void SetUpTestSuite() {
        setenv("VISTREL_MODULES", MODULES_FOLDER, 1);
        ASSERT_TRUE(gtk_init_check()) << "no display";
    }

    void SetUp() override {
        char pattern[] = "/tmp/vistrel-journey-XXXXXX";
        root_ = mkdtemp(pattern);
        host_ = std::make_unique<LinuxHost>(root_);
        shown_ = std::make_unique<PhoneWindow>(1);
        host_->setDisplay(&shown_->screen());
        navigation_ =
            UINavigationController::withRootViewController(std::make_shared<UIViewController>());
        window_ = std::make_shared<UIWindow>();
        window_->addSubview(navigation_->view());
        window_->makeKeyAndVisible();
        shown_->present();
        server_ = std::make_unique<TestPageServer>();
    }

    void TearDown() override {
        navigation_->view()->removeFromSuperview();
        navigation_.reset();
        window_.reset();
        UIApplication::resetSharedApplication();
        shown_.reset();
        host_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    std::string root_;
    std::unique_ptr<LinuxHost> host_;
    std::unique_ptr<PhoneWindow> shown_;
    std::unique_ptr<TestPageServer> server_;
    std::shared_ptr<UINavigationController> navigation_;
    std::shared_ptr<UIWindow> window_;
};

}
