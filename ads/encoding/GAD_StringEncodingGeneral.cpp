#include "ads/encoding/GAD_StringEncodingGeneral.h"

namespace vistrel::stringEncodingGeneral {
void encode(unsigned shift, const char* alphabet, const unsigned char* bytes, std::size_t size,
            char* out) {
    const unsigned mask = (1U << shift) - 1;
    unsigned buffer = 0;
    unsigned bits = 0;
    for (std::size_t i = 0; i < size; ++i) {
        buffer = buffer << 8 | bytes[i];
        bits += 8;
        while (bits >= shift) {
            bits -= shift;
            *out++ = alphabet[buffer >> bits & mask];
        }
    }
    if (bits != 0)
        *out = alphabet[buffer << (shift - bits) & mask];
}

std::optional<std::size_t> Decoder::take(std::string_view text, std::size_t atLeast) {
    std::size_t at = 0;
    for (; at < text.size() && (at < atLeast || !isBetweenGroups()); ++at) {
        const std::int8_t value = values_[static_cast<unsigned char>(text[at])];
        if (value == kPaddingChar)
            sawPadding_ = true;
        else if (value == kUnknownChar || (value >= 0 && sawPadding_))
            return std::nullopt;
        if (value < 0)
            continue;
        buffer_ = buffer_ << shift_ | static_cast<unsigned>(value);
        bits_ += shift_;
        if (bits_ >= 8) {
            bits_ -= 8;
            *out_++ = static_cast<unsigned char>(buffer_ >> bits_);
        }
    }
    return at;
}
}
