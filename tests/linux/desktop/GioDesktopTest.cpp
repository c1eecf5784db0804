#include "platform/linux/desktop/GioDesktop.h"

#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/mail/SmtpMailService.h"
#include "tests/linux/MainLoop.h"

#include <gio/gio.h>
#include <gmock/gmock.h>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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
    char pattern[] = "/tmp/vistrel-copy-XXXXXX";
    const std::string folder = ::mkdtemp(pattern);
    const std::string film(3'000'000, 'f');
    std::ofstream(folder + "/film.mp4") << film;
    std::ofstream(folder + "/there.mp4") << "there";
    const auto copy = [&](const std::string& from, const std::string& to) {
        std::optional<bool> succeeded;
        double last = 0;
        desktop_->copyFile(
            "file://" + folder + "/" + from, folder + "/" + to,
            [&](double fraction) { last = fraction; },
            [&](const host::Status& outcome) { succeeded = outcome.ok(); });
        EXPECT_TRUE(turnUntil([&] { return succeeded.has_value(); }));
        return succeeded.value_or(false) && last == 1;
    };
    const auto content = [&](const std::string& name) {
        std::ifstream file(folder + "/" + name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    EXPECT_TRUE(copy("film.mp4", "copied.mp4"));
    EXPECT_TRUE(content("copied.mp4") == film);
    EXPECT_FALSE(copy("film.mp4", "there.mp4"));
    EXPECT_EQ(content("there.mp4"), "there");
    EXPECT_FALSE(copy("missing.mp4", "new.mp4"));
    EXPECT_FALSE(copy("film.mp4", "no/folder.mp4"));
    std::error_code ignored;
    const std::filesystem::directory_iterator files(folder);
    EXPECT_EQ(std::distance(begin(files), end(files)), 3) << "nothing hidden is left";
    std::filesystem::remove_all(folder, ignored);
}

/// A session whose desktop shows notifications and keeps the screen awake, and records the calls.
class SessionTest : public ::testing::Test {
protected:
    SessionTest() {
        g_test_dbus_up(bus_);
        connection_ = g_dbus_connection_new_for_address_sync(
            g_test_dbus_get_bus_address(bus_),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        serve("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
              "<method name='Notify'><arg type='s'/><arg type='u'/><arg type='s'/><arg type='s'/>"
              "<arg type='s'/><arg type='as'/><arg type='a{sv}'/><arg type='i'/>"
              "<arg type='u' direction='out'/></method>");
        serve("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
              "<method name='Inhibit'><arg type='s'/><arg type='s'/>"
              "<arg type='u' direction='out'/></method>"
              "<method name='UnInhibit'><arg type='u'/></method>");
        desktop_ = std::make_shared<GioDesktop>(mail_);
    }
    ~SessionTest() override {
        desktop_ = nullptr;
        g_object_unref(connection_);
        g_test_dbus_stop(bus_);
        g_object_unref(bus_);
    }

    void serve(const char* name, const char* path, const std::string& methods) {
        const std::string xml =
            "<node><interface name='" + std::string(name) + "'>" + methods + "</interface></node>";
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
        static const GDBusInterfaceVTable kCalls = {
            [](GDBusConnection*, const char*, const char*, const char*, const char* method,
               GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
                char* text = g_variant_print(arguments, FALSE);
                static_cast<SessionTest*>(self)->calls_.push_back(std::string(method) + text);
                g_free(text);
                const bool answers = std::string(method) != "UnInhibit";
                g_dbus_method_invocation_return_value(invocation,
                                                      answers ? g_variant_new("(u)", 7U) : nullptr);
            },
            nullptr,
            nullptr,
            {}};
        g_dbus_connection_register_object(connection_, path, node->interfaces[0], &kCalls, this,
                                          nullptr, nullptr);
        g_dbus_node_info_unref(node);
        GVariant* answer = g_dbus_connection_call_sync(
            connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
            nullptr, nullptr);
        g_variant_unref(answer);
    }

    GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
    GDBusConnection* connection_ = nullptr;
    std::vector<std::string> calls_;
    GLibEventLoop loop_;
    DeviceFiles files_{"/nonexistent"};
    SmtpMailService mail_{loop_, files_, [](const auto&, const auto&) {
                              return std::nullopt;
                          }};
    std::shared_ptr<GioDesktop> desktop_;
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
