#pragma once
#include "tests/support/Testing.h"

#include <gio/gio.h>

namespace vistrel {

/// The value as text, with its types; takes it over.
inline std::string printed(GVariant* value) {
    char* text = g_variant_print(g_variant_ref_sink(value), TRUE);
    std::string result = text;
    g_free(text);
    g_variant_unref(value);
    return result;
}

/// A message bus and one connection to it. While it lives it is the session's bus.
class TestBus {
public:
    TestBus() {
        g_test_dbus_up(bus_);
        connection_ = g_dbus_connection_new_for_address_sync(
            address(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
    }
    ~TestBus() {
        g_object_unref(connection_);
        g_test_dbus_stop(bus_);
        g_object_unref(bus_);
    }
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    const char* address() const { return g_test_dbus_get_bus_address(bus_); }
    GDBusConnection* connection() const { return connection_; }

private:
    GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
    GDBusConnection* connection_ = nullptr;
};

}
