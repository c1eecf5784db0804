#include "platform/linux/desktop/FileOpener.h"

#include "platform/linux/NativeCallback.h"
#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/PosixFailure.h"

#include <fcntl.h>
#include <gio/gunixfdlist.h>

#include <cerrno>
#include <memory>
#include <string_view>
#include <vector>

namespace vistrel {

namespace {

constexpr const char* kDesktopFile = "org.vistrel.Vistrel.desktop";
constexpr const char* kPortalName = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kOpener = "org.freedesktop.portal.OpenURI";
constexpr const char* kFileManagerName = "org.freedesktop.FileManager1";
/// As many as fit on a phone's sheet.
constexpr std::size_t kMostPrograms = 6;
constexpr const char* kFileManagerPath = "/org/freedesktop/FileManager1";

std::string addressOf(const std::string& path) {
    const auto file = NativeReference<GFile>::adopt(g_file_new_for_path(path.c_str()));
    const std::unique_ptr<char, decltype(&g_free)> address(g_file_get_uri(file.get()), g_free);
    return address.get();
}

/// Reports the error, or that there is none, and frees it.
void report(const FileOpener::Done& done, GError* error) {
    if (error)
        done(host::Failure{EIO, error->message});
    else
        done(host::Done{});
    g_clear_error(&error);
}

/// Ends a call of a session's service: reports that it has done its work, or has `otherwise` do it
/// where there is no such service. Forgets a cancelled call. Frees reply and error.
template <typename Otherwise>
void finishCall(GVariant* reply, GError* error, const FileOpener::Done& done, Otherwise otherwise) {
    if (reply) {
        g_variant_unref(reply);
        done(host::Done{});
    } else if (!g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
        otherwise();
    }
    g_clear_error(&error);
}

using Program = NativeReference<GAppInfo>;

/// The preferred one first; never this one.
std::vector<Program> programsFor(const std::string& path) {
    const std::unique_ptr<char, decltype(&g_free)> type(
        g_content_type_guess(path.c_str(), nullptr, 0, nullptr), g_free);
    std::vector<Program> found;
    GList* programs = g_app_info_get_all_for_type(type.get());
    for (const GList* each = programs; each && found.size() < kMostPrograms; each = each->next) {
        const char* id = g_app_info_get_id(G_APP_INFO(each->data));
        if (!id || std::string_view(id) != kDesktopFile)
            found.push_back(Program::ref(G_APP_INFO(each->data)));
    }
    g_list_free_full(programs, g_object_unref);
    return found;
}

void launch(const Program& program, const std::string& path, GCancellable* cancellable,
            FileOpener::Done done) {
    std::string address = addressOf(path);
    GList addresses{address.data(), nullptr, nullptr};
    const auto launched = [program, done = std::move(done)](GAsyncResult* result) {
        GError* error = nullptr;
        g_app_info_launch_uris_finish(program.get(), result, &error);
        report(done, error);
    };
    callAsync(launched, g_app_info_launch_uris_async, program.get(), &addresses,
              static_cast<GAppLaunchContext*>(nullptr), cancellable);
}

void openWithOneOf(std::vector<Program> programs, const std::string& path,
                   NativeReference<GCancellable> cancellable, const host::AskForProgram& ask,
                   FileOpener::Done done) {
    if (programs.empty())
        return done(host::Failure{ENOENT, {}});
    std::vector<std::string> names;
    names.reserve(programs.size());
    for (const Program& program : programs)
        names.emplace_back(g_app_info_get_display_name(program.get()));
    ask(names, [programs = std::move(programs), path, cancellable = std::move(cancellable),
                done = std::move(done)](std::size_t index) {
        launch(programs.at(index), path, cancellable.get(), done);
    });
}

void openFolderOf(const std::string& path, GCancellable* cancellable, FileOpener::Done done) {
    const std::string folder = addressOf(path.substr(0, path.find_last_of('/')));
    const auto launched = [done = std::move(done)](GAsyncResult* result) {
        GError* error = nullptr;
        g_app_info_launch_default_for_uri_finish(result, &error);
        report(done, error);
    };
    callAsync(launched, g_app_info_launch_default_for_uri_async, folder.c_str(),
              static_cast<GAppLaunchContext*>(nullptr), cancellable);
}

}

void FileOpener::openWith(const std::string& path, host::AskForProgram ask, Done done) const {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen())
        return callLater([done = std::move(done), failure = lastPosixFailure()] { done(failure); });
    if (!bus_)
        return callLater(
            [path, ask = std::move(ask), done = std::move(done), cancellable = cancellable_] {
                openWithOneOf(programsFor(path), path, cancellable, ask, done);
            });
    const int number = file.release();
    const auto files =
        NativeReference<GUnixFDList>::adopt(g_unix_fd_list_new_from_array(&number, 1));
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&options, "{sv}", "ask", g_variant_new_boolean(TRUE));
    const auto asked = [path, ask = std::move(ask), done = std::move(done), bus = bus_,
                        cancellable = cancellable_](GAsyncResult* result) {
        GError* error = nullptr;
        GVariant* request =
            g_dbus_connection_call_with_unix_fd_list_finish(bus.get(), nullptr, result, &error);
        finishCall(request, error, done,
                   [&] { openWithOneOf(programsFor(path), path, cancellable, ask, done); });
    };
    callAsync(asked, g_dbus_connection_call_with_unix_fd_list, bus_.get(), kPortalName, kPortalPath,
              kOpener, "OpenFile", g_variant_new("(sha{sv})", "", 0, &options),
              G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NONE, -1, files.get(), cancellable_.get());
}

void FileOpener::showInFolder(const std::string& path, Done done) const {
    if (!bus_)
        return openFolderOf(path, cancellable_.get(), std::move(done));
    GVariantBuilder items;
    g_variant_builder_init(&items, G_VARIANT_TYPE_STRING_ARRAY);
    g_variant_builder_add(&items, "s", addressOf(path).c_str());
    const auto shown = [path, done = std::move(done), bus = bus_,
                        cancellable = cancellable_](GAsyncResult* result) {
        GError* error = nullptr;
        GVariant* nothing = g_dbus_connection_call_finish(bus.get(), result, &error);
        finishCall(nothing, error, done, [&] { openFolderOf(path, cancellable.get(), done); });
    };
    callAsync(shown, g_dbus_connection_call, bus_.get(), kFileManagerName, kFileManagerPath,
              kFileManagerName, "ShowItems", g_variant_new("(ass)", &items, ""), nullptr,
              G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get());
}

}
