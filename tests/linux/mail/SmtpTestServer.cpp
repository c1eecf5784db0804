#include "tests/linux/mail/SmtpTestServer.h"

#include <utility>

namespace vistrel {

SmtpTestServer::SmtpTestServer(Behaviour behaviour)
    : behaviour_(std::move(behaviour))
    , listener_(NativeReference<GSocketListener>::adopt(g_socket_listener_new()))
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new())) {
    const auto address = NativeReference<GSocketAddress>::adopt(
        g_inet_socket_address_new_from_string("127.0.0.1", 0));
    GSocketAddress* bound = nullptr;
    g_socket_listener_add_address(listener_.get(), address.get(), G_SOCKET_TYPE_STREAM,
                                  G_SOCKET_PROTOCOL_TCP, nullptr, &bound, nullptr);
    port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(bound));
    g_object_unref(bound);
    thread_ = std::thread([this] { serve(); });
}

SmtpTestServer::~SmtpTestServer() {
    g_cancellable_cancel(cancellable_.get());
    thread_.join();
}

std::vector<std::string> SmtpTestServer::commands() {
    const std::lock_guard lock(mutex_);
    return commands_;
}

std::string SmtpTestServer::message() {
    const std::lock_guard lock(mutex_);
    return message_;
}

void SmtpTestServer::serve() {
    while (GSocketConnection* connection =
               g_socket_listener_accept(listener_.get(), nullptr, cancellable_.get(), nullptr)) {
        stream_ = NativeReference<GIOStream>::adopt(G_IO_STREAM(connection));
        secure_ = false;
        unread_.clear();
        if (!behaviour_.encrypted || encrypt())
            converse();
        g_io_stream_close(stream_.get(), nullptr, nullptr);
        stream_ = {};
    }
}

void SmtpTestServer::say(const std::string& text) {
    g_output_stream_write_all(g_io_stream_get_output_stream(stream_.get()), text.data(),
                              text.size(), nullptr, cancellable_.get(), nullptr);
}

std::optional<std::string> SmtpTestServer::readLine() {
    auto end = unread_.find("\r\n");
    while (end == std::string::npos) {
        char buffer[1024];
        const gssize count =
            g_input_stream_read(g_io_stream_get_input_stream(stream_.get()), buffer, sizeof buffer,
                                cancellable_.get(), nullptr);
        if (count <= 0)
            return std::nullopt;
        unread_.append(buffer, static_cast<std::size_t>(count));
        end = unread_.find("\r\n");
    }
    std::string line = unread_.substr(0, end);
    unread_.erase(0, end + 2);
    return line;
}

bool SmtpTestServer::encrypt() {
    const auto certificate =
        NativeReference<GTlsCertificate>::adopt(g_tls_certificate_new_from_files(
            behaviour_.certificateFile.c_str(), behaviour_.keyFile.c_str(), nullptr));
    GIOStream* secure = g_tls_server_connection_new(stream_.get(), certificate.get(), nullptr);
    if (!secure)
        return false;
    stream_ = NativeReference<GIOStream>::adopt(secure);
    secure_ = true;
    return g_tls_connection_handshake(G_TLS_CONNECTION(secure), cancellable_.get(), nullptr) !=
           FALSE;
}

void SmtpTestServer::converse() {
    if (!answer("greeting"))
        return;
    while (const auto line = readLine()) {
        {
            const std::lock_guard lock(mutex_);
            commands_.push_back((secure_ ? "*" : "") + *line);
        }
        if (!answer(*line))
            return;
    }
}

bool SmtpTestServer::answer(const std::string& command) {
    static const std::map<std::string, std::string> usual = {
        {"greeting", "220 test"},
        {"STARTTLS", "220 go"},
        {"AUTH", "235 welcome"},
        {"MAIL", "250 ok"},
        {"RCPT", "250 ok"},
        {"DATA", "354 go on"},
        {"message", "250 kept"},
        {"QUIT", "221 goodbye"},
        {"EHLO", "250 HELP"},
        {"bWU=", "334 UGFzc3dvcmQ6"}, // the user name of AUTH LOGIN
        {"czNjcmV0LXBhc3M=", "235 welcome"},
    };
    const std::string word = command.substr(0, command.find(' '));
    if (word == "QUIT" && behaviour_.staysOpen)
        return readLine().has_value();
    if (word == "EHLO") {
        for (const std::string& extension : behaviour_.extensions)
            say("250-" + extension + "\r\n");
    }
    const auto& replies = behaviour_.replies.contains(word) ? behaviour_.replies : usual;
    const auto found = replies.find(word);
    const std::string reply = found == replies.end() ? "500 what?" : found->second;
    if (reply.empty())
        return false;
    say(reply + "\r\n" + (word == "STARTTLS" ? behaviour_.injected : ""));
    if (reply.front() > '3')
        return true;
    if (word == "STARTTLS")
        return encrypt();
    if (word == "DATA")
        return readMessage() && answer("message");
    return word != "QUIT";
}

bool SmtpTestServer::readMessage() {
    std::string text;
    while (const auto line = readLine()) {
        if (*line == ".") {
            const std::lock_guard lock(mutex_);
            message_ = text;
            return true;
        }
        text += *line + "\r\n";
        if (behaviour_.messageBytes && text.size() >= *behaviour_.messageBytes)
            return false;
    }
    return false;
}

}
