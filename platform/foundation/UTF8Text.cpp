#include "platform/foundation/UTF8Text.h"

#include <cstddef>

namespace vistrel {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Bytes of the character that a lead byte starts; 0 for a byte that starts none.
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

std::string textFromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes)
        appendUTF8Character(text, static_cast<unsigned char>(byte));
    return text;
}

}
