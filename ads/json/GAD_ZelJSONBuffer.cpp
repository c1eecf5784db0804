#include "ads/json/GAD_ZelJSONBuffer.h"

#include "platform/foundation/HexDigits.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>

namespace vistrel {
namespace {
/// The letter after the backslash: 'u' for a character without a short escape, 0 for a plain one.
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

GAD_ZelJSONBuffer::~GAD_ZelJSONBuffer() {
    std::free(begin_);
}

void GAD_ZelJSONBuffer::grow(std::size_t size) {
    const auto used = static_cast<std::size_t>(at_ - begin_);
    const auto before = static_cast<std::size_t>(end_ - begin_);
    const std::size_t now = std::max({kFirstSize, before * 2, used + size + kSlack});
    char* memory = static_cast<char*>(std::realloc(begin_, now));
    if (!memory)
        throw std::bad_alloc();
    begin_ = memory;
    at_ = memory + used;
    end_ = memory + now;
}

void GAD_ZelJSONBuffer::putBlanks(std::size_t count) {
    makeRoom(count);
    std::memset(at_, ' ', count);
    at_ += count;
}

/// Writes the rest of a string after its opening quote if it is long or needs escapes.
void GAD_ZelJSONBuffer::putLong(std::string_view text) {
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
    *at_++ = '"';
}

/// Writes the rest of a string that contains a character to escape. Blocks of plain characters are
/// still copied whole.
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
            *at_++ = *from++;
        if (from == blockEnd)
            continue;
        const auto byte = static_cast<unsigned char>(*from++);
        *at_++ = '\\';
        *at_++ = kEscapes[byte];
        if (kEscapes[byte] == 'u') {
            *at_++ = '0';
            *at_++ = '0';
            *at_++ = byte < 0x10 ? '0' : '1';
            *at_++ = kLowerHexDigits[byte & 15];
        }
    }
    makeRoom(1);
    *at_++ = '"';
}

}
