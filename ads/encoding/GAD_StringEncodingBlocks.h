#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

/// The inner loops of GAD_StringEncoding for alphabets of 16, 32 and 64 characters. They do whole
/// groups from the front of their input and leave the rest to the general path.
namespace vistrel::stringEncodingBlocks {

/// A value, or a negative number, for every byte.
using ReverseMap = std::array<std::int8_t, 256>;

/// How many characters so many bits fill; the divisions by a variable would take longer than the
/// encoding of a short text.
constexpr std::size_t wholeCharacters(unsigned shift, std::size_t bits) {
    switch (shift) {
    case 3:
        return bits / 3;
    case 5:
        return bits / 5;
    case 6:
        return bits / 6;
    case 7:
        return bits / 7;
    default:
        return bits >> shift / 2;
    }
}

template <unsigned Shift>
inline constexpr std::size_t kGroupBytes = Shift == 4   ? 1
                                           : Shift == 5 ? 5
                                                        : 3;
template <unsigned Shift>
inline constexpr std::size_t kGroupCharacters = kGroupBytes<Shift> * 8 / Shift;

/// The two inner loops for one number of bits a character.
struct Blocks {
    /// Encodes whole groups (of 1, 5 or 3 bytes for 4, 5 or 6 bits a character). How many bytes
    /// were encoded. Writes nothing beyond their characters.
    std::size_t (*encode)(const char* alphabet, const unsigned char* bytes, std::size_t size,
                          char* out);
    /// Decodes whole groups (of 2, 8 or 4 characters) up to the first that holds a character
    /// without a value. How many characters were decoded. Writes nothing beyond their bytes.
    std::size_t (*decode)(const ReverseMap& values, const char* text, std::size_t size,
                          unsigned char* out);
};

/// For other shifts than 4, 5 and 6, loops that do nothing.
Blocks blocksFor(unsigned shift);
}
