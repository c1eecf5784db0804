#include "platform/foundation/UTF8Text.h"

#include <cstddef>

namespace vistrel {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Length in bytes of the character that a lead byte starts; 0 when it starts none.
std::size_t lengthFromLead(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

struct Decoded {
    char32_t character;
    std::size_t length; ///< 0: not well-formed
};

Decoded decodedFirst(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lengthFromLead(lead);
    if (length == 0 || text.size() < length)
        return {kReplacement, 0};
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t at = 1; at < length; ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if ((byte & 0xC0U) != 0x80)
            return {kReplacement, 0};
        character = character << 6 | (byte & 0x3FU);
    }
    const bool overlong =
        (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    if (overlong || surrogate || character > 0x10FFFF)
        return {kReplacement, 0};
    return {character, length};
}

/// Where upper and lower case are a fixed distance apart. A distance of 1 means pairs, in which
/// upper case has the parity of the first character.
struct CaseRange {
    char32_t first;
    char32_t last;
    char32_t distance;
};

constexpr CaseRange kUpperCase[] = {
    {U'A', U'Z', 32},   {0xC0, 0xD6, 32},    {0xD8, 0xDE, 32},    {0x100, 0x12E, 1},
    {0x132, 0x136, 1},  {0x139, 0x147, 1},   {0x14A, 0x176, 1},   {0x179, 0x17D, 1},
    {0x386, 0x386, 38}, {0x388, 0x38A, 37},  {0x38C, 0x38C, 64},  {0x38E, 0x38F, 63},
    {0x391, 0x3A1, 32}, {0x3A3, 0x3AB, 32},  {0x400, 0x40F, 80},  {0x410, 0x42F, 32},
    {0x460, 0x480, 1},  {0x48A, 0x4BE, 1},   {0x4C1, 0x4CD, 1},   {0x4D0, 0x52E, 1},
    {0x531, 0x556, 48}, {0x1E00, 0x1E94, 1}, {0x1EA0, 0x1EFE, 1},
};

char32_t lowercase(char32_t character) {
    if (character == 0x178) // The only letter whose lower case is in another block.
        return 0xFF;
    for (const auto& [first, last, distance] : kUpperCase)
        if (character >= first && character <= last)
            return distance != 1 || (character - first) % 2 == 0 ? character + distance : character;
    return character;
}

}

char32_t takeUTF8Character(std::string_view& text) {
    const Decoded first = decodedFirst(text);
    text.remove_prefix(first.length == 0 ? 1 : first.length);
    return first.character;
}

void appendUTF8Character(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            text += static_cast<char>(0xE0 | character >> 12);
        } else {
            text += static_cast<char>(0xF0 | character >> 18);
            text += static_cast<char>(0x80 | (character >> 12 & 0x3F));
        }
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    }
    text += static_cast<char>(0x80 | (character & 0x3F));
}

bool isUTF8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = decodedFirst(text).length;
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string_view shortenedUTF8(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes)
        return text;
    while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80)
        --bytes;
    return text.substr(0, bytes);
}

std::string lowercaseText(std::string_view text) {
    std::string lower;
    lower.reserve(text.size());
    while (!text.empty())
        appendUTF8Character(lower, lowercase(takeUTF8Character(text)));
    return lower;
}

std::string textFromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes)
        appendUTF8Character(text, static_cast<unsigned char>(byte));
    return text;
}

}
