#include "platform/linux/main/RunningInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kBusName = "org.vistrel.Vistrel";
constexpr const char* kPath = "/org/vistrel/Vistrel";
constexpr const char* kInterface = "org.freedesktop.Application";
constexpr const char* kDescription = R"(<node><interface name='org.freedesktop.Application'>
<method name='Activate'><arg type='a{sv}' direction='in'/></method>
<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>
<method name='ActivateAction'><arg type='s' direction='in'/><arg type='av' direction='in'/>
<arg type='a{sv}' direction='in'/></method></interface></node>)";

/// The first process locks its folder some time before it is on the bus.
constexpr int kAttempts = 50;
constexpr gulong kMicrosecondsBetweenAttempts = 100000;
constexpr int kAnswerMilliseconds = 2000;

std::string busNameOf(const std::string& deviceRoot, bool isDefaultRoot) {
    if (isDefaultRoot)
        return kBusName;
    std::error_code error;
    const auto path = std::filesystem::weakly_canonical(deviceRoot, error).string();
    const std::unique_ptr<char, decltype(&g_free)> digest(
        g_compute_checksum_for_string(G_CHECKSUM_SHA256, path.c_str(), -1), g_free);
    return std::string(kBusName) + ".Device" + std::string(digest.get()).substr(0, 16);
}

using Variant = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

Variant child(GVariant* container, gsize index) {
    return {g_variant_get_child_value(container, index), g_variant_unref};
}

std::string startupToken(GVariant* platformData) {
    const char* token = nullptr;
    if (!g_variant_lookup(platformData, "activation-token", "&s", &token))
        g_variant_lookup(platformData, "desktop-startup-id", "&s", &token);
    return token ? token : "";
}

NativeReference<GDBusConnection> sessionBus() {
    return NativeReference<GDBusConnection>::adopt(
        g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
}

GVariant* openArguments(const std::string& address) {
    const char* addresses[] = {address.c_str(), nullptr};
    return address.empty() ? g_variant_new("(a{sv})", nullptr)
                           : g_variant_new("(^asa{sv})", addresses, nullptr);
}

}

struct RunningInstance::Calls {
    static void method(GDBusConnection*, const char*, const char*, const char*, const char* name,
                       GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
        const auto& activated = static_cast<RunningInstance*>(self)->activated_;
        if (g_str_equal(name, "Activate")) {
            activated({}, startupToken(child(arguments, 0).get()));
        } else if (g_str_equal(name, "Open")) {
            const auto list = child(arguments, 0);
            std::vector<std::string> addresses;
            for (gsize i = 0; i < g_variant_n_children(list.get()); ++i)
                addresses.emplace_back(g_variant_get_string(child(list.get(), i).get(), nullptr));
            activated(addresses, startupToken(child(arguments, 1).get()));
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    static constexpr GDBusInterfaceVTable table{method, nullptr, nullptr, {}};
};

RunningInstance::RunningInstance(const std::string& deviceRoot, bool isDefaultRoot) {
    std::error_code error;
    std::filesystem::create_directories(deviceRoot, error);
    lock_ = open(deviceRoot.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A folder that cannot be locked is somebody else's worry.
    isFirst_ = lock_ < 0 || flock(lock_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    busName_ = busNameOf(deviceRoot, isDefaultRoot);
}

RunningInstance::~RunningInstance() {
    // The session bus may have ended first.
    if (nameOwner_ != 0 && !g_dbus_connection_is_closed(connection_.get()))
        g_bus_unown_name(nameOwner_);
    if (registration_ != 0)
        g_dbus_connection_unregister_object(connection_.get(), registration_);
    if (lock_ >= 0)
        close(lock_);
}

bool RunningInstance::activateFirst(const std::string& address) const {
    const auto bus = sessionBus();
    for (int attempt = 0; bus && attempt < kAttempts; ++attempt) {
        GError* error = nullptr;
        GVariant* answer = g_dbus_connection_call_sync(
            bus.get(), busName_.c_str(), kPath, kInterface, address.empty() ? "Activate" : "Open",
            openArguments(address), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, kAnswerMilliseconds,
            nullptr, &error);
        if (answer) {
            g_variant_unref(answer);
            return true;
        }
        const bool notThere =
            g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) ||
            g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN);
        g_error_free(error);
        if (!notThere)
            return false;
        g_usleep(kMicrosecondsBetweenAttempts);
    }
    return false;
}

void RunningInstance::listen(Activated activated) {
    connection_ = sessionBus();
    if (!connection_)
        return;
    activated_ = std::move(activated);
    g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
    static GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kDescription, nullptr);
    registration_ = g_dbus_connection_register_object(connection_.get(), kPath, node->interfaces[0],
                                                      &Calls::table, this, nullptr, nullptr);
    nameOwner_ = g_bus_own_name_on_connection(connection_.get(), busName_.c_str(),
                                              G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr,
                                              nullptr, nullptr);
}

}
