#pragma once
#include "tests/linux/LoopbackListener.h"

namespace vistrel {

/// A mail server on loopback that answers as a test says.
class SmtpTestServer {
public:
    struct Behaviour {
        std::vector<std::string> extensions{"AUTH PLAIN LOGIN"};
        /// Replies to the first word of a command; "greeting" and "message" too. Empty: hangs up.
        std::map<std::string, std::string> replies{};
        /// Hangs up after so many bytes of the message.
        std::optional<std::size_t> messageBytes{};
        /// For STARTTLS, or from the start with `encrypted`; outlives the server.
        const TestCertificate* certificate = nullptr;
        bool encrypted = false;
        /// After QUIT, says nothing and keeps the connection until the client closes it.
        bool staysOpen = false;
        /// Said along with the agreement to STARTTLS, in the clear.
        std::string injected{};
    };

    explicit SmtpTestServer(Behaviour behaviour)
        : behaviour_(std::move(behaviour)) {}

    std::uint16_t port() const { return listener_.port(); }
    /// Commands as they came; those that came encrypted begin with "*".
    std::vector<std::string> commands() { return commands_.get(); }
    /// As it came, dots and all, without the final one.
    std::string message() { return message_.get(); }

private:
    void converse(LoopbackConnection& connection) {
        if (behaviour_.encrypted && !connection.encrypt(*behaviour_.certificate))
            return;
        bool goesOn = answer(connection, "greeting");
        while (const auto line = goesOn ? connection.readLine() : std::nullopt) {
            const std::string mark = connection.isEncrypted() ? "*" : "";
            commands_.change([&](auto& all) { all.push_back(mark + *line); });
            goesOn = answer(connection, *line);
        }
    }
    bool answer(LoopbackConnection& connection, const std::string& command) {
        auto replies = behaviour_.replies;
        replies.insert({{"greeting", "220 test"},
                        {"STARTTLS", "220 go"},
                        {"AUTH", "235 welcome"},
                        {"MAIL", "250 ok"},
                        {"RCPT", "250 ok"},
                        {"DATA", "354 go on"},
                        {"message", "250 kept"},
                        {"QUIT", "221 goodbye"},
                        {"EHLO", "250 HELP"},
                        {"bWU=", "334 UGFzc3dvcmQ6"}, // the user name of AUTH LOGIN
                        {"czNjcmV0LXBhc3M=", "235 welcome"}});
        const std::string word = command.substr(0, command.find(' '));
        if (word == "QUIT" && behaviour_.staysOpen)
            return connection.readLine().has_value();
        for (const std::string& extension : behaviour_.extensions)
            if (word == "EHLO")
                (void)connection.send("250-" + extension + "\r\n");
        const std::string reply = replies.contains(word) ? replies[word] : "500 what?";
        if (reply.empty())
            return false;
        (void)connection.send(reply + "\r\n" + (word == "STARTTLS" ? behaviour_.injected : ""));
        if (reply.front() > '3')
            return true;
        if (word == "STARTTLS")
            return connection.encrypt(*behaviour_.certificate);
        if (word == "DATA")
            return readMessage(connection) && answer(connection, "message");
        return word != "QUIT";
    }
    bool readMessage(LoopbackConnection& connection) {
        std::string text;
        while (const auto line = connection.readLine()) {
            if (*line == ".") {
                message_.change([&](auto& message) { message = text; });
                return true;
            }
            text += *line + "\r\n";
            if (behaviour_.messageBytes && text.size() >= *behaviour_.messageBytes)
                return false;
        }
        return false;
    }

    Behaviour behaviour_;
    Shared<std::vector<std::string>> commands_;
    Shared<std::string> message_;
    LoopbackListener listener_{[this](LoopbackConnection& connection) {
        converse(connection);
    }};
};

}
