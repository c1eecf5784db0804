#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace vistrel {

/// What a mail server says to one command, put together line by line.
class SmtpReply {
public:
    /// One line with its end. False when the remote host does not speak the protocol.
    [[nodiscard]] bool take(std::string_view line);

    /// Whether the last line of the reply has come; the next line begins another reply.
    bool isComplete() const { return complete_; }
    int code() const { return code_; }
    bool isRefusal() const { return code_ >= 400; }
    /// Code and words on one line, fit to be shown.
    std::string text() const;

private:
    int code_ = 0;
    std::string words_;
    bool complete_ = true;
};

}
