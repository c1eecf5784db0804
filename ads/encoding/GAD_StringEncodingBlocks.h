#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

/// The inner loops of GAD_StringEncoding for the alphabets of 16, 32 and 64 characters, whatever
/// the characters are. They do whole groups from the front of their input and leave the rest, and
/// everything unusual, to the general path. There is a portable form and one each
/// for the AVX2 and the AVX-512 VBMI instructions, chosen when the program runs; all give the same
/// result.
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
    /// without a value. How many characters were decoded. May leave off earlier. Writes nothing
    /// beyond what all `size` characters would give.
    std::size_t (*decode)(const ReverseMap& values, const char* text, std::size_t size,
                          unsigned char* out);
};

/// The loops of a form for 4, 5 or 6 bits a character. `Form` has `encode` and `decode`, each with
/// the number of bits as its template argument.
template <typename Form>
Blocks blocksOf(unsigned shift) {
    switch (shift) {
    case 4:
        return {Form::template encode<4>, Form::template decode<4>};
    case 5:
        return {Form::template encode<5>, Form::template decode<5>};
    default:
        return {Form::template encode<6>, Form::template decode<6>};
    }
}

/// The fastest form that this processor has. For other shifts than 4, 5 and 6 loops that do
/// nothing.
Blocks blocksFor(unsigned shift);

/// The forms, for the shifts 4, 5 and 6. A vector form hands what is too short for a block of its
/// own to the form before it; it must not be used where it is not available.
namespace portable {
Blocks blocksFor(unsigned shift);
}
namespace avx2 {
bool isAvailable();
Blocks blocksFor(unsigned shift);
}
namespace vbmi {
bool isAvailable();
Blocks blocksFor(unsigned shift);
}
}
