#include "platform/linux/main/BroadwayServer.h"

#include <gio/gio.h>

#include <cstdlib>

namespace vistrel {

namespace {

constexpr int kFirstPort = 8085;
constexpr int kPorts = 60;
constexpr int kDisplayBase = 8080; ///< the server's display number is its port less this

bool answers(int port) {
    GSocketClient* client = g_socket_client_new();
    GSocketConnection* connection = g_socket_client_connect_to_host(
        client, "127.0.0.1", static_cast<guint16>(port), nullptr, nullptr);
    g_object_unref(client);
    if (!connection)
        return false;
    g_object_unref(connection);
    return true;
}

}

BroadwayServer::~BroadwayServer() {
    if (!server_)
        return;
    g_subprocess_force_exit(server_);
    g_object_unref(server_);
}

bool BroadwayServer::start() {
    for (port_ = kFirstPort; port_ < kFirstPort + kPorts && answers(port_); ++port_) {
    }
    const std::string display = ":" + std::to_string(port_ - kDisplayBase);
    const std::string port = std::to_string(port_);
    server_ = g_subprocess_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                             G_SUBPROCESS_FLAGS_STDERR_SILENCE),
                               nullptr, "gtk4-broadwayd", "--address", "127.0.0.1", "--port",
                               port.c_str(), display.c_str(), nullptr);
    if (!server_)
        return false;
    for (int tries = 0; tries < 100 && !answers(port_); ++tries)
        g_usleep(50000);
    setenv("GDK_BACKEND", "broadway", 1);
    setenv("BROADWAY_DISPLAY", display.c_str(), 1);
    return answers(port_);
}

std::string BroadwayServer::address() const {
    return "http://127.0.0.1:" + std::to_string(port_);
}

}
