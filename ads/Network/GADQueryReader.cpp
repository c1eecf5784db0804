#include "ads/Network/GADQueryReader.h"

#include "platform/foundation/UTF8Text.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace vistrel {

namespace {

constexpr unsigned kSeparator = 1;
constexpr unsigned kEquals = 2;
constexpr unsigned kEscape = 4;
constexpr unsigned kNotASCII = 8;
constexpr unsigned kUpperCase = 16;

constexpr std::array<std::uint8_t, 256> kMarks = [] {
    std::array<std::uint8_t, 256> marks{};
    marks['&'] = marks[';'] = kSeparator;
    marks['='] = kEquals;
    marks['%'] = kEscape;
    for (std::size_t byte = 'A'; byte <= 'Z'; ++byte)
        marks[byte] = kUpperCase;
    for (std::size_t byte = 0x80; byte < marks.size(); ++byte)
        marks[byte] = kNotASCII;
    return marks;
}();

constexpr std::uint8_t kNoDigit = 0xFF;
constexpr std::array<std::uint8_t, 256> kDigits = [] {
    std::array<std::uint8_t, 256> digits{};
    digits.fill(kNoDigit);
    for (unsigned digit = 0; digit < 10; ++digit)
        digits['0' + digit] = static_cast<std::uint8_t>(digit);
    for (unsigned digit = 10; digit < 16; ++digit)
        digits['a' + digit - 10] = digits['A' + digit - 10] = static_cast<std::uint8_t>(digit);
    return digits;
}();

unsigned marksOf(char character) {
    return kMarks[static_cast<unsigned char>(character)];
}

unsigned digitOf(char character) {
    return kDigits[static_cast<unsigned char>(character)];
}

std::string_view textOf(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

}

GADQueryReader::GADQueryReader(std::string_view query)
    : builder_(query)
    , end_(builder_.text() + query.size()) {}

Value::Dictionary GADQueryReader::read() {
    builder_.openDictionary();
    for (char* at = builder_.text(); at < end_;)
        at = piece(at) + 1;
    builder_.close();
    const Value dictionary = builder_.finish();
    return dictionary.dictionary();
}

char* GADQueryReader::piece(char* at) {
    Part key{at, nullptr, 0};
    Part value{at, nullptr, 0};
    Marks marks = 0;
    unsigned equalsSigns = 0;
    for (; at < end_; ++at) {
        const unsigned mark = marksOf(*at);
        if (mark == 0)
            continue;
        if (mark == kSeparator)
            break;
        if (mark != kEquals) {
            marks |= mark;
            continue;
        }
        ++equalsSigns;
        key.end = at;
        key.marks = marks;
        value.begin = at + 1;
        marks = 0;
    }
    value.end = at;
    value.marks = marks;
    if (equalsSigns == 1)
        addMember(key, value);
    return at;
}

void GADQueryReader::addMember(Part key, Part value) {
    if (!unescape(key) || !unescape(value))
        return;
    if ((key.marks & (kUpperCase | kEscape)) != 0) {
        for (char* at = key.begin; at < key.end; ++at) {
            if (*at >= 'A' && *at <= 'Z')
                *at = static_cast<char>(*at - 'A' + 'a');
        }
    }
    builder_.pushString(textOf(key.begin, key.end));
    builder_.pushString(textOf(value.begin, value.end));
}

bool GADQueryReader::unescape(Part& part) {
    if ((part.marks & kEscape) != 0) {
        char* out = part.begin;
        for (const char* at = part.begin; at < part.end; ++at) {
            if (*at != '%') {
                *out++ = *at;
                continue;
            }
            if (part.end - at < 3 || digitOf(at[1]) == kNoDigit || digitOf(at[2]) == kNoDigit)
                return false;
            *out++ = static_cast<char>(digitOf(at[1]) << 4 | digitOf(at[2]));
            at += 2;
        }
        part.end = out;
    }
    return (part.marks & (kEscape | kNotASCII)) == 0 || isUTF8(textOf(part.begin, part.end));
}

}
