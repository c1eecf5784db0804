#include "platform/linux/mail/SmtpReply.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {
/// Generous against the protocol's limit of 512 bytes a line; what goes on beyond is no mail
/// server.
constexpr std::size_t kLongestLine = 4096;
constexpr std::size_t kMostLines = 256;
}

std::optional<SmtpReply> SmtpReplyReader::next() {
    while (!broken_) {
        const auto end = pending_.find('\n');
        if (end == std::string::npos) {
            broken_ = pending_.size() > kLongestLine;
            return std::nullopt;
        }
        std::string line = pending_.substr(0, end);
        pending_.erase(0, end + 1);
        if (line.ends_with('\r'))
            line.pop_back();
        if (takeLine(line))
            return std::exchange(reply_, {});
    }
    return std::nullopt;
}

bool SmtpReplyReader::takeLine(std::string_view line) {
    const auto isDigit = [](char c) {
        return c >= '0' && c <= '9';
    };
    const bool wellFormed = line.size() >= 3 && line.size() <= kLongestLine &&
                            std::ranges::all_of(line.substr(0, 3), isDigit) &&
                            (line.size() == 3 || line[3] == ' ' || line[3] == '-');
    const int code =
        wellFormed ? (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0') : 0;
    const bool belongs = reply_.lines.empty() || reply_.code == code;
    if (!wellFormed || !belongs || reply_.lines.size() == kMostLines) {
        broken_ = true;
        return false;
    }
    reply_.code = code;
    reply_.lines.emplace_back(line.size() > 4 ? line.substr(4) : std::string_view());
    return line.size() == 3 || line[3] == ' ';
}

}
