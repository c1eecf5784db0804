#pragma once
#include "tests/linux/TestCertificate.h"

#include <list>
#include <mutex>
#include <thread>

namespace vistrel {

/// A value that a server's threads and the test use.
template <typename T>
class Shared {
public:
    T get() {
        const std::lock_guard lock(mutex_);
        return value_;
    }
    template <typename Change>
    void change(Change change) {
        const std::lock_guard lock(mutex_);
        change(value_);
    }

private:
    std::mutex mutex_;
    T value_{};
};

/// An accepted connection, used from its own thread. Everything fails once the client has gone or
/// the listener ends.
class LoopbackConnection {
public:
    LoopbackConnection(NativeReference<GIOStream> stream, GCancellable* end)
        : end_(end) {
        use(std::move(stream));
    }

    bool send(const std::string& bytes) const {
        return g_output_stream_write_all(g_io_stream_get_output_stream(stream_.get()), bytes.data(),
                                         bytes.size(), nullptr, end_, nullptr) != FALSE;
    }
    /// Without its CR LF.
    std::optional<std::string> readLine() const {
        const std::unique_ptr<char, decltype(&g_free)> line(
            g_data_input_stream_read_line(input_.get(), nullptr, end_, nullptr), g_free);
        return line ? std::optional<std::string>(line.get()) : std::nullopt;
    }
    void waitForClose() const {
        while (readLine()) {
        }
    }
    bool encrypt(const TestCertificate& certificate) {
        GIOStream* secure =
            g_tls_server_connection_new(stream_.get(), certificate.get().get(), nullptr);
        use(NativeReference<GIOStream>::adopt(secure));
        return g_tls_connection_handshake(G_TLS_CONNECTION(secure), end_, nullptr) != FALSE;
    }
    bool isEncrypted() const { return G_IS_TLS_CONNECTION(stream_.get()); }
    void close() const { g_io_stream_close(stream_.get(), nullptr, nullptr); }

private:
    void use(NativeReference<GIOStream> stream) {
        stream_ = std::move(stream);
        input_ = NativeReference<GDataInputStream>::adopt(
            g_data_input_stream_new(g_io_stream_get_input_stream(stream_.get())));
        g_data_input_stream_set_newline_type(input_.get(), G_DATA_STREAM_NEWLINE_TYPE_CR_LF);
        g_filter_input_stream_set_close_base_stream(G_FILTER_INPUT_STREAM(input_.get()), FALSE);
    }

    GCancellable* end_;
    NativeReference<GIOStream> stream_;
    NativeReference<GDataInputStream> input_;
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
