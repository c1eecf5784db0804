#include "platform/linux/desktop/GioDesktop.h"

#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/mail/SmtpMailService.h"

#include <gtest/gtest.h>

#include <stdlib.h>

#include <memory>
#include <optional>

namespace vistrel {
namespace {

/// A session without a bus and without handlers.
class BareSessionTest : public ::testing::Test {
protected:
    BareSessionTest() {
        ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
        ::setenv("XDG_DATA_DIRS", "/nonexistent", 1);
        ::setenv("XDG_DATA_HOME", "/nonexistent", 1);
    }
    GLibEventLoop loop_;
    DeviceFiles files_{"/nonexistent"};
    SmtpMailService mail_{loop_, files_, [](const auto&, const auto&) {
                              return std::nullopt;
                          }};
    std::shared_ptr<GioDesktop> desktop_ = std::make_shared<GioDesktop>(mail_);
};

TEST_F(BareSessionTest, EachServiceIsAbsentWithoutHarm) {
    desktop_->setIdleTimerDisabled(true);
    desktop_->setIdleTimerDisabled(false);
    desktop_->vibrate();
    for (const char* url : {"unheard-of-scheme:x", "no scheme at all", "", "://"}) {
        EXPECT_FALSE(desktop_->canOpenURL(url)) << url;
        EXPECT_FALSE(desktop_->openURL(url)) << url;
    }
}

}
}
