#include "platform/linux/desktop/GioDesktop.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/desktop/FileOpener.h"
#include "platform/linux/files/NewFile.h"
#include "platform/linux/mail/MailService.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kApplicationID = "org.vistrel.Vistrel";
constexpr const char* kScreenSaverName = "org.freedesktop.ScreenSaver";
constexpr const char* kScreenSaverPath = "/org/freedesktop/ScreenSaver";
constexpr const char* kNotificationsName = "org.freedesktop.Notifications";
constexpr const char* kNotificationsPath = "/org/freedesktop/Notifications";
constexpr const char* kFeedbackName = "org.sigxcpu.Feedback";
constexpr const char* kFeedbackPath = "/org/sigxcpu/Feedback";

struct Freed {
    void operator()(char* text) const { g_free(text); }
};

}

GioDesktop::GioDesktop(MailService& mail)
    : mail_(mail)
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new())) {}

GioDesktop::~GioDesktop() {
    g_cancellable_cancel(cancellable_.get());
    // The bus ends the inhibition with the process; this is for processes that continue.
    releaseInhibition();
}

GDBusConnection* GioDesktop::bus() {
    if (!std::exchange(busAsked_, true)) {
        bus_ = NativeReference<GDBusConnection>::adopt(
            g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        if (bus_)
            g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
    }
    return bus_.get();
}

bool GioDesktop::canOpenURL(const std::string& url) {
    const std::unique_ptr<char, Freed> scheme(g_uri_parse_scheme(url.c_str()));
    if (!scheme)
        return false;
    if (std::string_view(scheme.get()) == "file") {
        const auto file = NativeReference<GFile>::adopt(g_file_new_for_uri(url.c_str()));
        return static_cast<bool>(NativeReference<GAppInfo>::adopt(
            g_file_query_default_handler(file.get(), nullptr, nullptr)));
    }
    const auto handler =
        NativeReference<GAppInfo>::adopt(g_app_info_get_default_for_uri_scheme(scheme.get()));
    return static_cast<bool>(handler);
}

bool GioDesktop::openURL(const std::string& url) {
    // Not asked before: a portal may know a handler that this process cannot see.
    g_app_info_launch_default_for_uri_async(url.c_str(), nullptr, nullptr, nullptr, nullptr);
    return canOpenURL(url);
}

void GioDesktop::setIdleTimerDisabled(bool disabled) {
    if (idleTimerDisabled_ == disabled)
        return;
    idleTimerDisabled_ = disabled;
    if (disabled)
        inhibit();
    else
        releaseInhibition();
}

void GioDesktop::inhibit() {
    if (inhibiting_ || inhibitionCookie_ != 0 || !bus())
        return;
    inhibiting_ = true;
    callAsync(weakly(this, &GioDesktop::inhibited), g_dbus_connection_call, bus(), kScreenSaverName,
              kScreenSaverPath, kScreenSaverName, "Inhibit",
              g_variant_new("(ss)", kApplicationID, g_dgettext("vistrel", "Playing")),
              G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancellable_.get());
}

void GioDesktop::inhibited(GAsyncResult* result) {
    GVariant* answer = g_dbus_connection_call_finish(bus(), result, nullptr);
    inhibiting_ = false;
    if (!answer)
        return;
    g_variant_get(answer, "(u)", &inhibitionCookie_);
    g_variant_unref(answer);
    if (!idleTimerDisabled_)
        releaseInhibition();
}

void GioDesktop::releaseInhibition() {
    const guint32 cookie = std::exchange(inhibitionCookie_, 0);
    if (cookie == 0 || !bus())
        return;
    g_dbus_connection_call(bus(), kScreenSaverName, kScreenSaverPath, kScreenSaverName, "UnInhibit",
                           g_variant_new("(u)", cookie), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                           -1, nullptr, nullptr, nullptr);
}

void GioDesktop::vibrate() {
    if (!bus())
        return;
    g_dbus_connection_call(
        bus(), kFeedbackName, kFeedbackPath, kFeedbackName, "TriggerFeedback",
        g_variant_new("(ssa{sv}i)", kApplicationID, "button-pressed", nullptr, -1), nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
}

void GioDesktop::notify(const std::string& title, const std::string& text) {
    if (!bus())
        return;
    // The body may be markup; file names are not.
    const std::unique_ptr<char, Freed> body(g_markup_escape_text(text.c_str(), -1));
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(kApplicationID));
    g_dbus_connection_call(bus(), kNotificationsName, kNotificationsPath, kNotificationsName,
                           "Notify",
                           g_variant_new("(susssasa{sv}i)", "Vistrel", 0U, kApplicationID,
                                         title.c_str(), body.get(), nullptr, &hints, -1),
                           nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

void GioDesktop::copyFile(const std::string& url, const std::string& machinePath,
                          std::function<void(double fraction)> progress,
                          std::function<void(host::Status)> done) {
    const std::string hidden =
        machinePath.substr(0, machinePath.find_last_of('/') + 1) + newHiddenName();
    const auto from = NativeReference<GFile>::adopt(g_file_new_for_uri(url.c_str()));
    const auto to = NativeReference<GFile>::adopt(g_file_new_for_path(hidden.c_str()));
    const auto report = std::make_shared<std::function<void(double)>>(std::move(progress));
    const GFileProgressCallback progressed = [](goffset now, goffset all, gpointer data) {
        if (all > 0)
            (*static_cast<std::function<void(double)>*>(data))(static_cast<double>(now) /
                                                               static_cast<double>(all));
    };
    // The lambda keeps `report`, which the callback reaches until then.
    const auto copied = [from, report, hidden, machinePath,
                         done = std::move(done)](GAsyncResult* result) {
        GError* error = nullptr;
        host::Status outcome = host::Done{};
        if (g_file_copy_finish(from.get(), result, &error))
            outcome = renameWithoutReplacing(AT_FDCWD, hidden, AT_FDCWD, machinePath);
        else
            outcome = host::Failure{EIO, error->message};
        g_clear_error(&error);
        if (!outcome)
            ::unlink(hidden.c_str());
        done(outcome);
    };
    callAsync(copied, g_file_copy_async, from.get(), to.get(),
              static_cast<GFileCopyFlags>(G_FILE_COPY_TARGET_DEFAULT_PERMS), G_PRIORITY_DEFAULT,
              cancellable_.get(), progressed, static_cast<gpointer>(report.get()));
}

void GioDesktop::openWith(const std::string& machinePath, host::AskForProgram ask,
                          std::function<void(host::Status)> done) {
    FileOpener(NativeReference<GDBusConnection>::ref(bus()), cancellable_)
        .openWith(machinePath, std::move(ask), std::move(done));
}

void GioDesktop::showInFolder(const std::string& machinePath,
                              std::function<void(host::Status)> done) {
    FileOpener(NativeReference<GDBusConnection>::ref(bus()), cancellable_)
        .showInFolder(machinePath, std::move(done));
}

bool GioDesktop::canSendMail() {
    return mail_.canSendMail();
}

void GioDesktop::sendMail(host::OutgoingMail mail, std::function<void(double fraction)> progress,
                          std::function<void(host::Status)> done) {
    mail_.sendMail(mail, std::move(progress), std::move(done));
}

host::Status GioDesktop::saveDraft(const host::OutgoingMail& mail) {
    return mail_.saveDraft(mail);
}

}
