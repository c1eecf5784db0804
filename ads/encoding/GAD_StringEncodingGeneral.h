#pragma once
#include "ads/encoding/GAD_StringEncodingTables.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// The general path of GAD_StringEncoding: any shift from 1 to 7, one character at a time. It
/// defines the encodings; the tables only make whole steps faster.
namespace vistrel::stringEncodingGeneral {
using ReverseMap = GAD_StringEncodingTables::ReverseMap;

/// Reverse map entries of characters without a value.
enum Meaning : std::int8_t { kUnknownChar = -1, kPaddingChar = -2, kIgnoredChar = -3 };

/// Writes all bits, padding the last character with zero bits.
inline void encode(unsigned shift, const char* alphabet, const unsigned char* bytes,
                   std::size_t size, char* out) {
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

/// Decodes a text in pieces into memory that is large enough for all of its bits.
class Decoder {
public:
    Decoder(unsigned shift, const ReverseMap& values, unsigned char* out)
        : values_(values)
        , out_(out)
        , shift_(shift) {}

    /// Whether the next character starts a new group.
    [[nodiscard]] bool isBetweenGroups() const { return bits_ == 0 && !sawPadding_; }
    /// Where the next byte goes.
    [[nodiscard]] unsigned char* out() const { return out_; }
    /// Call after decoding bytes by other means.
    void skip(std::size_t bytes) { out_ += bytes; }

    /// Decodes at least this many characters, then continues to the end of a group or of the text.
    /// Returns how many; empty when one is invalid.
    std::optional<std::size_t> take(std::string_view text, std::size_t atLeast) {
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

    /// Whether all remaining bits are zero.
    [[nodiscard]] bool finish() const { return (buffer_ & ((1U << bits_) - 1)) == 0; }

private:
    const ReverseMap& values_;
    unsigned char* out_;
    unsigned shift_;
    unsigned buffer_ = 0;
    unsigned bits_ = 0;
    bool sawPadding_ = false;
};
}
