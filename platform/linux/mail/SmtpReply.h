#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// What the server says to one command.
struct SmtpReply {
    int code = 0;
    std::vector<std::string> lines; ///< without code and line end
};

/// Cuts replies out of the bytes that arrive.
class SmtpReplyReader {
public:
    void add(std::string_view bytes) { pending_ += bytes; }
    /// The next whole reply; nothing while it is incomplete, and once isBroken().
    std::optional<SmtpReply> next();
    /// The other side does not speak the protocol.
    bool isBroken() const { return broken_; }
    bool isEmpty() const { return pending_.empty() && reply_.lines.empty(); }

private:
    bool takeLine(std::string_view line);

    std::string pending_;
    SmtpReply reply_;
    bool broken_ = false;
};

}
