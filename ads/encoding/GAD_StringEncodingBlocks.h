#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

/// The inner loops of GAD_StringEncoding for the alphabets of 16, 32 and 64 characters, whatever
/// the characters are. They do whole groups from the front of their input and leave the rest, and
/// everything unusual, to the general path. There is a portable form and one for the AVX2
/// instructions, chosen when the program runs; both give the same result.
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

/// Encodes whole groups (of 1, 5 or 3 bytes for 4, 5 or 6 bits a character). How many bytes were
/// encoded; 0 for other shifts. Writes nothing beyond their characters.
std::size_t encode(unsigned shift, const char* alphabet, const unsigned char* bytes,
                   std::size_t size, char* out);

/// Decodes whole groups (of 2, 8 or 4 characters) up to the first that holds a character without a
/// value. How many characters were decoded; 0 for other shifts. May leave off earlier. Writes
/// nothing beyond what all `size` characters would give.
std::size_t decode(unsigned shift, const ReverseMap& values, const char* text, std::size_t size,
                   unsigned char* out);

namespace portable {
std::size_t encode(unsigned shift, const char* alphabet, const unsigned char* bytes,
                   std::size_t size, char* out);
std::size_t decode(unsigned shift, const ReverseMap& values, const char* text, std::size_t size,
                   unsigned char* out);
}

namespace avx2 {
/// Whether this processor has the instructions; the functions must not be called otherwise.
bool isAvailable();
std::size_t encode(unsigned shift, const char* alphabet, const unsigned char* bytes,
                   std::size_t size, char* out);
std::size_t decode(unsigned shift, const ReverseMap& values, const char* text, std::size_t size,
                   unsigned char* out);
}
}
