#pragma once
#include "platform/linux/NativeReference.h"

#include <gio/gio.h>

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vistrel {

/// A mail server on 127.0.0.1 that answers as a test says, from its own thread.
class SmtpTestServer {
public:
    struct Behaviour {
        std::vector<std::string> extensions{"AUTH PLAIN LOGIN"};
        /// Replies to the first word of a command; "greeting" and "message" too. Empty: hangs up.
        std::map<std::string, std::string> replies{};
        /// Hangs up after so many bytes of the message.
        std::optional<std::size_t> messageBytes{};
        std::string certificateFile{}; ///< for STARTTLS, or from the start with `encrypted`
        std::string keyFile{};
        bool encrypted = false;
        /// After QUIT, says nothing and keeps the connection until the client closes it.
        bool staysOpen = false;
        /// Said along with the agreement to STARTTLS, in the clear.
        std::string injected{};
    };

    explicit SmtpTestServer(Behaviour behaviour);
    ~SmtpTestServer();
    SmtpTestServer(const SmtpTestServer&) = delete;
    SmtpTestServer& operator=(const SmtpTestServer&) = delete;

    std::uint16_t port() const { return port_; }
    /// Commands as they came; those that came encrypted begin with "*".
    std::vector<std::string> commands();
    /// As it came, dots and all, without the final one.
    std::string message();

private:
    void serve();
    void converse();
    void say(const std::string& text);
    std::optional<std::string> readLine();
    bool readMessage();
    bool encrypt();
    bool answer(const std::string& command);

    Behaviour behaviour_;
    NativeReference<GSocketListener> listener_;
    NativeReference<GCancellable> cancellable_;
    std::uint16_t port_ = 0;
    NativeReference<GIOStream> stream_;
    std::string unread_;
    bool secure_ = false;
    std::mutex mutex_;
    std::vector<std::string> commands_;
    std::string message_;
    std::thread thread_;
};

}
