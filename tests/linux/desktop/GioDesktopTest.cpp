#include "platform/linux/desktop/GioDesktop.h"

#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/mail/SmtpMailService.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestBus.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

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
    desktop_->notify("Title", "text");
    for (const char* url : {"unheard-of-scheme:x", "no scheme at all", "", "://"}) {
        EXPECT_FALSE(desktop_->canOpenURL(url)) << url;
        EXPECT_FALSE(desktop_->openURL(url)) << url;
    }
}

TEST_F(BareSessionTest, AFileIsCopiedWholeOrNotAtAllAndReplacesNothing) {
    const support::TemporaryFolder folder;
    const std::string film(3'000'000, 'f');
    folder.put("film.mp4", film);
    folder.put("there.mp4", "there");
    const auto copy = [&](const std::string& from, const std::string& to) {
        std::optional<bool> succeeded;
        double last = 0;
        desktop_->copyFile(
            "file://" + folder.path(from), folder.path(to),
            [&](double fraction) { last = fraction; },
            [&](const host::Status& outcome) { succeeded = outcome.ok(); });
        EXPECT_TRUE(turnUntil([&] { return succeeded.has_value(); }));
        return succeeded.value_or(false) && last == 1;
    };
    EXPECT_TRUE(copy("film.mp4", "copied.mp4"));
    EXPECT_TRUE(support::contentsOf(folder.path("copied.mp4")) == film);
    EXPECT_FALSE(copy("film.mp4", "there.mp4"));
    EXPECT_EQ(support::contentsOf(folder.path("there.mp4")), "there");
    EXPECT_FALSE(copy("missing.mp4", "new.mp4"));
    EXPECT_FALSE(copy("film.mp4", "no/folder.mp4"));
    const std::filesystem::directory_iterator files(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 3) << "nothing hidden is left";
}

/// A session whose desktop shows notifications and keeps the screen awake, and records the calls.
class SessionTest : public BareSessionTest {
protected:
    SessionTest() {
        serve("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
              "<method name='Notify'><arg type='s'/><arg type='u'/><arg type='s'/><arg type='s'/>"
              "<arg type='s'/><arg type='as'/><arg type='a{sv}'/><arg type='i'/>"
              "<arg type='u' direction='out'/></method>");
        serve("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
              "<method name='Inhibit'><arg type='s'/><arg type='s'/>"
              "<arg type='u' direction='out'/></method>"
              "<method name='UnInhibit'><arg type='u'/></method>");
    }
    ~SessionTest() override { desktop_ = nullptr; }

    void serve(const char* name, const char* path, const std::string& methods) {
        const std::string xml =
            "<node><interface name='" + std::string(name) + "'>" + methods + "</interface></node>";
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
        static const GDBusInterfaceVTable kCalls = {
            [](GDBusConnection*, const char*, const char*, const char*, const char* method,
               GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
                static_cast<SessionTest*>(self)->calls_.push_back(
                    method + printed(g_variant_ref(arguments)));
                const bool answers = std::string(method) != "UnInhibit";
                g_dbus_method_invocation_return_value(invocation,
                                                      answers ? g_variant_new("(u)", 7U) : nullptr);
            },
            nullptr,
            nullptr,
            {}};
        g_dbus_connection_register_object(bus_.connection(), path, node->interfaces[0], &kCalls,
                                          this, nullptr, nullptr);
        g_dbus_node_info_unref(node);
        g_bus_own_name_on_connection(bus_.connection(), name, G_BUS_NAME_OWNER_FLAGS_NONE, nullptr,
                                     nullptr, nullptr, nullptr);
    }

    TestBus bus_;
    std::vector<std::string> calls_;
};

TEST_F(SessionTest, ANotificationIsPlainText) {
    desktop_->notify("Download Succeeded", "<b>Tom & Jerry</b>.mp4");
    ASSERT_TRUE(turnUntil([&] { return calls_.size() == 1; }));
    EXPECT_EQ(calls_[0], "Notify('Vistrel', 0, 'org.vistrel.Vistrel', 'Download Succeeded', "
                         "'&lt;b&gt;Tom &amp; Jerry&lt;/b&gt;.mp4', [], "
                         "{'desktop-entry': <'org.vistrel.Vistrel'>}, -1)");
}

TEST_F(SessionTest, TheScreenStaysAwakeUntilItMaySleepAgain) {
    desktop_->setIdleTimerDisabled(true);
    desktop_->setIdleTimerDisabled(true);
    desktop_->setIdleTimerDisabled(false); // before the answer has come
    ASSERT_TRUE(turnUntil([&] { return calls_.size() == 2; }));
    EXPECT_THAT(calls_,
                testing::ElementsAre("Inhibit('org.vistrel.Vistrel', 'Playing')", "UnInhibit(7,)"));
}

}
}
