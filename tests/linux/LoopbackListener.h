#pragma once
#include "platform/linux/NativeReference.h"
#include "tests/support/Testing.h"

#include <gio/gio.h>

#include <list>
#include <thread>

namespace vistrel {

/// An accepted connection, used from its own thread. Everything fails once the client has gone or
/// the listener ends.
class LoopbackConnection {
public:
    LoopbackConnection(NativeReference<GIOStream> stream, GCancellable* end)
        : stream_(std::move(stream))
        , end_(end) {}

    bool send(const std::string& bytes) const {
        return g_output_stream_write_all(g_io_stream_get_output_stream(stream_.get()), bytes.data(),
                                         bytes.size(), nullptr, end_, nullptr) != FALSE;
    }
    /// Without its CR LF.
    std::optional<std::string> readLine() {
        auto end = unread_.find("\r\n");
        for (; end == std::string::npos; end = unread_.find("\r\n")) {
            if (!readMore())
                return std::nullopt;
        }
        std::string line = unread_.substr(0, end);
        unread_.erase(0, end + 2);
        return line;
    }
    void waitForClose() {
        while (readMore()) {
        }
    }
    bool encrypt(const std::string& certificateFile, const std::string& keyFile) {
        const auto certificate = NativeReference<GTlsCertificate>::adopt(
            g_tls_certificate_new_from_files(certificateFile.c_str(), keyFile.c_str(), nullptr));
        GIOStream* secure = g_tls_server_connection_new(stream_.get(), certificate.get(), nullptr);
        stream_ = NativeReference<GIOStream>::adopt(secure);
        return g_tls_connection_handshake(G_TLS_CONNECTION(secure), end_, nullptr) != FALSE;
    }
    bool isEncrypted() const { return G_IS_TLS_CONNECTION(stream_.get()); }
    void close() const { g_io_stream_close(stream_.get(), nullptr, nullptr); }

private:
    bool readMore() {
        char buffer[4096];
        const gssize count = g_input_stream_read(g_io_stream_get_input_stream(stream_.get()),
                                                 buffer, sizeof buffer, end_, nullptr);
        unread_.append(buffer, static_cast<std::size_t>(std::max<gssize>(count, 0)));
        return count > 0;
    }

    NativeReference<GIOStream> stream_;
    GCancellable* end_;
    std::string unread_;
};

/// Listens on 127.0.0.1 and serves each connection on its own thread.
class LoopbackListener {
public:
    explicit LoopbackListener(std::function<void(LoopbackConnection&)> serve)
        : serve_(std::move(serve)) {
        const auto address = NativeReference<GSocketAddress>::adopt(
            g_inet_socket_address_new_from_string("127.0.0.1", 0));
        GSocketAddress* bound = nullptr;
        g_socket_listener_add_address(listener_.get(), address.get(), G_SOCKET_TYPE_STREAM,
                                      G_SOCKET_PROTOCOL_TCP, nullptr, &bound, nullptr);
        port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(bound));
        g_object_unref(bound);
        acceptor_ = std::jthread([this] { acceptConnections(); });
    }
    ~LoopbackListener() {
        g_cancellable_cancel(end_.get());
        acceptor_.join();
    }
    LoopbackListener(const LoopbackListener&) = delete;
    LoopbackListener& operator=(const LoopbackListener&) = delete;

    std::uint16_t port() const { return port_; }

private:
    void acceptConnections() {
        while (GSocketConnection* accepted =
                   g_socket_listener_accept(listener_.get(), nullptr, end_.get(), nullptr))
            threads_.emplace_back([this, accepted] {
                LoopbackConnection connection(
                    NativeReference<GIOStream>::adopt(G_IO_STREAM(accepted)), end_.get());
                serve_(connection);
                connection.close();
            });
    }

    NativeReference<GSocketListener> listener_ =
        NativeReference<GSocketListener>::adopt(g_socket_listener_new());
    NativeReference<GCancellable> end_ = NativeReference<GCancellable>::adopt(g_cancellable_new());
    std::function<void(LoopbackConnection&)> serve_;
    std::uint16_t port_ = 0;
    std::list<std::jthread> threads_;
    std::jthread acceptor_;
};

}
