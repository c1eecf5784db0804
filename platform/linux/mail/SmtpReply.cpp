#include "platform/linux/mail/SmtpReply.h"

#include <glib.h>

#include <algorithm>

namespace vistrel {

namespace {
/// Generous: the protocol allows 512 bytes a line.
constexpr std::size_t kMostBytes = std::size_t{64} * 1024;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
}

bool SmtpReply::take(std::string_view line) {
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    if (complete_) {
        words_.clear();
        complete_ = false;
    }
    const bool isWellFormed = line.size() >= 3 && std::ranges::all_of(line.substr(0, 3), isDigit) &&
                              (line.size() == 3 || line[3] == ' ' || line[3] == '-');
    if (!isWellFormed || words_.size() + line.size() > kMostBytes)
        return false;
    code_ = (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
    complete_ = line.size() == 3 || line[3] == ' ';
    if (line.size() > 4)
        words_.append(" ").append(line.substr(4));
    return true;
}

std::string SmtpReply::text() const {
    std::string text = std::to_string(code_) + words_;
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    text = valid;
    g_free(valid);
    return text;
}

}
