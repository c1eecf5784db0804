#include "ads/json/GAD_ZelJSONReader.h"
#include "ads/json/GAD_ZelJSONScan.h"
#include "platform/foundation/HexDigits.h"

#include <array>
#include <charconv>

namespace vistrel {
namespace {
/// The character that an escape letter means; 0 for none.
constexpr std::array<char, 256> kEscapes = [] {
    std::array<char, 256> escapes{};
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    escapes['/'] = '/';
    escapes['b'] = '\b';
    escapes['f'] = '\f';
    escapes['n'] = '\n';
    escapes['r'] = '\r';
    escapes['t'] = '\t';
    return escapes;
}();

std::string hexadecimal(char byte) {
    std::array<char, 2> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(),
                                      static_cast<unsigned char>(byte), 16);
    return "'0x" + std::string(digits.data(), result.ptr) + "'";
}

char* appendUTF8(char* out, unsigned character) {
    const auto put = [&](unsigned byte) {
        *out++ = static_cast<char>(byte);
    };
    const auto putTail = [&](int shift) {
        put(0x80 | (character >> shift & 0x3F));
    };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        putTail(0);
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        putTail(6);
        putTail(0);
    } else {
        put(0xF0 | character >> 18);
        putTail(12);
        putTail(6);
        putTail(0);
    }
    return out;
}
}

/// Reads the rest of a string from its first escape or control character. Unescaped text is never
/// longer than escaped text, so it is written over it.
char* GAD_ZelJSONReader::escapedString(char* begin, char* at, std::string_view& text) {
    char* out = at;
    while (*at != '"') {
        if (*at != '\\')
            return failControlCharacter(*at);
        at = escape(at + 1, out);
        if (!at)
            return nullptr;
        if (at == end_)
            return fail(Code::InputEnded, "Unexpected EOF while parsing string");
        const auto run = static_cast<std::size_t>(jsonScan::plainEnd(at) - at);
        std::memmove(out, at, run);
        out += run;
        at += run;
    }
    text = {begin, out};
    return at + 1;
}

/// Reads an escape sequence after its backslash.
char* GAD_ZelJSONReader::escape(char* at, char*& out) {
    if (const char character = kEscapes[static_cast<unsigned char>(*at)]) {
        *out++ = character;
        return at + 1;
    }
    if (*at != 'u')
        return fail(Code::BadEscape, "Illegal escape sequence " + hexadecimal(*at));
    char* behind = unicodeEscape(at + 1, out);
    if (!behind)
        return fail(Code::BadUnicodeEscape, "Broken unicode character", std::move(error_));
    return behind;
}

char* GAD_ZelJSONReader::unicodeEscape(char* at, char*& out) {
    unsigned character = 0;
    at = hexQuad(at, character);
    if (!at)
        return fail(Code::BadUnicodeEscape, "Missing hex quad", std::move(error_));
    if (character >= 0xDC00 && character <= 0xDFFF)
        return fail(Code::BadUnicodeEscape, "Invalid high character in surrogate pair");
    if (character >= 0xD800 && character < 0xDC00) {
        at = lowSurrogate(at, character, character);
        if (!at)
            return nullptr;
    }
    out = appendUTF8(out, character);
    return at;
}

char* GAD_ZelJSONReader::lowSurrogate(char* at, unsigned high, unsigned& character) {
    constexpr const char* kMissing = "Missing low character in surrogate pair";
    if (at[0] != '\\' || at[1] != 'u')
        return fail(Code::BadUnicodeEscape, kMissing);
    unsigned low = 0;
    at = hexQuad(at + 2, low);
    if (!at)
        return fail(Code::BadUnicodeEscape, kMissing, std::move(error_));
    if (low < 0xDC00 || low > 0xDFFF)
        return fail(Code::BadUnicodeEscape, "Invalid low surrogate char");
    character = 0x10000 + ((high - 0xD800) << 10 | (low - 0xDC00));
    return at;
}

char* GAD_ZelJSONReader::hexQuad(char* at, unsigned& quad) {
    quad = 0;
    for (int i = 0; i < 4; ++i, ++at) {
        const int digit = hexDigitValue(*at);
        if (digit < 0)
            return fail(Code::BadUnicodeEscape, "Missing hex digit in quad");
        quad = quad << 4 | static_cast<unsigned>(digit);
    }
    return at;
}

char* GAD_ZelJSONReader::failControlCharacter(char byte) {
    return fail(Code::ControlCharacter, "Unescaped control character " + hexadecimal(byte));
}
}
