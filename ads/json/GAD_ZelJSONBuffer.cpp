#include "ads/json/GAD_ZelJSONBuffer.h"

#include <algorithm>
#include <array>

namespace vistrel {
namespace {
/// The letter after the backslash; 'u' for a character without one of its own, 0 for a plain one.
constexpr std::array<char, 256> kEscapes = [] {
    std::array<char, 256> escapes{};
    std::fill_n(escapes.begin(), 0x20, 'u');
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    escapes['\b'] = 'b';
    escapes['\f'] = 'f';
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\t'] = 't';
    return escapes;
}();

constexpr std::size_t kFirstSize = 1024;
constexpr std::size_t kLongestEscape = 6;
}

void GAD_ZelJSONBuffer::grow(std::size_t size) {
    const auto used = at_ ? static_cast<std::size_t>(at_ - text_.data()) : 0;
    text_.resize(std::max({kFirstSize, text_.size() * 2, used + size + kSlack}));
    at_ = text_.data() + used;
    end_ = text_.data() + text_.size();
}

void GAD_ZelJSONBuffer::putBlanks(std::size_t count) {
    makeRoom(count);
    std::memset(at_, ' ', count);
    at_ += count;
}

void GAD_ZelJSONBuffer::putQuoted(std::string_view text) {
    makeRoom(text.size() + 2);
    put('"');
    const char* from = text.data();
    std::size_t left = text.size();
    for (; left >= 16; left -= 16, from += 16, at_ += 16) {
        if (!jsonScan::copyPlainBlock(at_, from)) {
            putEscaped({from, left});
            return;
        }
    }
    if (!jsonScan::copyShortPlain(at_, from, left)) {
        putEscaped({from, left});
        return;
    }
    at_ += left;
    put('"');
}

/// The rest of a string, somewhere in which there is a character to escape. Blocks of plain
/// characters are still copied whole.
void GAD_ZelJSONBuffer::putEscaped(std::string_view text) {
    const char* from = text.data();
    const char* const end = from + text.size();
    while (from != end) {
        makeRoom(static_cast<std::size_t>(end - from) + kLongestEscape);
        while (end - from >= 16 && jsonScan::copyPlainBlock(at_, from)) {
            from += 16;
            at_ += 16;
        }
        const char* const blockEnd = from + std::min<std::ptrdiff_t>(16, end - from);
        while (from != blockEnd && !kEscapes[static_cast<unsigned char>(*from)])
            put(*from++);
        if (from == blockEnd)
            continue;
        const auto byte = static_cast<unsigned char>(*from++);
        put('\\');
        put(kEscapes[byte]);
        if (kEscapes[byte] == 'u') {
            put('0');
            put('0');
            put(byte < 0x10 ? '0' : '1');
            put("0123456789abcdef"[byte & 15]);
        }
    }
    makeRoom(1);
    put('"');
}

std::string GAD_ZelJSONBuffer::take() {
    text_.resize(static_cast<std::size_t>(at_ - text_.data()));
    return std::move(text_);
}
}
