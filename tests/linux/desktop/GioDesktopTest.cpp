#include "platform/linux/desktop/GioDesktop.h"

#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/mail/SmtpMailService.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestBus.h"
#include "tests/support/TemporaryFolder.h"

namespace vistrel {
namespace {

/// The user's data folder, where four programs are installed that copy what they open: this one
/// and two others for files of any kind, and one for folders. GLib looks for it once per process.
class DataFolder : public support::TemporaryFolder {
public:
    DataFolder() {
        std::filesystem::create_directory(path("applications"));
        std::filesystem::create_directory(path("device"));
        for (const std::string name : {"org.vistrel.Vistrel", "first", "other", "folders"})
            put("applications/" + name + ".desktop",
                "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=cp -r %f " +
                    path("by-" + name) + "\n");
        put("applications/mimeinfo.cache",
            "[MIME Cache]\ninode/directory=folders.desktop;\napplication/octet-stream="
            "org.vistrel.Vistrel.desktop;first.desktop;other.desktop;\n");
        put("device/a film.bin", std::string("\0film", 5));
        ::setenv("XDG_DATA_DIRS", "/nonexistent", 1);
        ::setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
        ::setenv("XDG_DATA_HOME", path().c_str(), 1);
    }
    static const DataFolder& shared() {
        static const DataFolder folder;
        return folder;
    }
    std::string film() const { return path("device/a film.bin"); }
};

/// A session without a bus.
class BareSessionTest : public ::testing::Test {
protected:
    BareSessionTest() { ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1); }

    /// Whether what the call starts reports success, later.
    static bool succeeds(const std::function<void(std::function<void(host::Status)>)>& call) {
        std::optional<bool> succeeded;
        call([&](const host::Status& outcome) { succeeded = outcome.ok(); });
        EXPECT_FALSE(succeeded) << "reported on the loop";
        EXPECT_TRUE(turnUntil([&] { return succeeded.has_value(); }));
        return succeeded.value_or(false);
    }

    const DataFolder& data_ = DataFolder::shared();
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
        double last = 0;
        return succeeds([&](auto done) {
                   desktop_->copyFile(
                       "file://" + folder.path(from), folder.path(to),
                       [&](double fraction) { last = fraction; }, done);
               }) &&
               last == 1;
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

TEST_F(BareSessionTest, AFileGoesToAnotherProgramAndItsFolderToTheFileManagers) {
    const auto chooseTheSecond = [](const std::vector<std::string>& names,
                                    const std::function<void(std::size_t)>& open) {
        EXPECT_THAT(names, ElementsAre("first", "other"));
        open(1);
    };
    const auto isCopied = [this](const char* name) {
        return turnUntil([&] { return std::filesystem::exists(data_.path(name)); });
    };
    for (const bool hasBus : {false, true}) {
        std::optional<TestBus> bus;
        if (hasBus)
            bus.emplace(); // without the portal and FileManager1
        const auto desktop = std::make_shared<GioDesktop>(mail_);
        EXPECT_TRUE(
            succeeds([&](auto done) { desktop->openWith(data_.film(), chooseTheSecond, done); }));
        EXPECT_TRUE(isCopied("by-other"));
        EXPECT_TRUE(succeeds([&](auto done) { desktop->showInFolder(data_.film(), done); }));
        EXPECT_TRUE(isCopied("by-folders/a film.bin"));
        EXPECT_FALSE(succeeds([&](auto done) { desktop->openWith(data_.path("none"), {}, done); }));
        for (const char* copy : {"by-other", "by-folders"})
            std::filesystem::remove_all(data_.path(copy));
    }
}

/// A session whose desktop shows notifications and files, vibrates, asks for programs and keeps the
/// screen awake, and records the calls.
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
        serve("org.sigxcpu.Feedback", "/org/sigxcpu/Feedback",
              "<method name='TriggerFeedback'><arg type='s'/><arg type='s'/><arg type='a{sv}'/>"
              "<arg type='i'/><arg type='u' direction='out'/></method>");
        serve("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
              "<method name='ShowItems'><arg type='as'/><arg type='s'/></method>");
        serve("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
              "<method name='OpenFile'><arg type='s'/><arg type='h'/><arg type='a{sv}'/>"
              "<arg type='o' direction='out'/></method>",
              "org.freedesktop.portal.OpenURI");
    }
    ~SessionTest() override { desktop_ = nullptr; }

    /// The interface has the service's name unless another is given.
    void serve(const char* name, const char* path, const std::string& methods,
               const char* interface = nullptr) {
        const std::string xml = "<node><interface name='" +
                                std::string(interface ? interface : name) + "'>" + methods +
                                "</interface></node>";
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
        static const GDBusInterfaceVTable kCalls = {
            [](GDBusConnection*, const char*, const char*, const char*, const char* method,
               GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
                static_cast<SessionTest*>(self)->calls_.push_back(
                    method + printed(g_variant_ref(arguments)));
                g_dbus_method_invocation_return_value(invocation, answerTo(method));
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

    static GVariant* answerTo(const std::string& method) {
        if (method == "OpenFile")
            return g_variant_new("(o)", "/request/1");
        return method == "UnInhibit" || method == "ShowItems" ? nullptr : g_variant_new("(u)", 7U);
    }

    TestBus bus_;
    std::vector<std::string> calls_;
};

TEST_F(SessionTest, ANotificationIsPlainTextAndAVibrationIsAPressedButton) {
    desktop_->notify("Download Succeeded", "<b>Tom & Jerry</b>.mp4");
    desktop_->vibrate();
    ASSERT_TRUE(turnUntil([&] { return calls_.size() == 2; }));
    EXPECT_THAT(
        calls_,
        ElementsAre("Notify('Vistrel', uint32 0, 'org.vistrel.Vistrel', 'Download Succeeded', "
                    "'&lt;b&gt;Tom &amp; Jerry&lt;/b&gt;.mp4', @as [], "
                    "{'desktop-entry': <'org.vistrel.Vistrel'>}, -1)",
                    "TriggerFeedback('org.vistrel.Vistrel', 'button-pressed', @a{sv} {}, -1)"));
}

TEST_F(SessionTest, TheScreenStaysAwakeUntilItMaySleepAgain) {
    desktop_->setIdleTimerDisabled(true);
    desktop_->setIdleTimerDisabled(true);
    desktop_->setIdleTimerDisabled(false); // before the answer has come
    ASSERT_TRUE(turnUntil([&] { return calls_.size() == 2; }));
    EXPECT_THAT(calls_,
                ElementsAre("Inhibit('org.vistrel.Vistrel', 'Playing')", "UnInhibit(uint32 7,)"));
}

TEST_F(SessionTest, ThePortalAsksForAProgramAndTheFileManagerShowsAFile) {
    EXPECT_TRUE(succeeds([&](auto done) { desktop_->openWith(data_.film(), {}, done); }));
    EXPECT_TRUE(succeeds([&](auto done) { desktop_->showInFolder(data_.film(), done); }));
    EXPECT_THAT(calls_,
                ElementsAre("OpenFile('', handle 0, {'ask': <true>})",
                            "ShowItems(['file://" + data_.path() + "/device/a%20film.bin'], '')"));
}

}
}
