#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vistrel {
/// The inner loops of GAD_StringEncoding for alphabets of 16, 32 and 64 characters: eight
/// characters per step, in pairs when encoding, with precomputed tables. They process whole steps
/// from the start of the input and leave the rest to the general path; for other alphabets they do
/// nothing.
class GAD_StringEncodingTables {
public:
    /// A value, or a negative number, for every byte.
    using ReverseMap = std::array<std::int8_t, 256>;

    GAD_StringEncodingTables(unsigned shift, std::string_view alphabet);

    void setReverseMap(const ReverseMap& values);

    /// Returns how many bytes were encoded: a multiple of a character's bits.
    std::size_t encode(const unsigned char* bytes, std::size_t size, char* out) const;
    /// Returns how many valid characters were decoded: a multiple of eight. Writes no more than the
    /// bytes of all `size` characters.
    std::size_t decode(const char* text, std::size_t size, unsigned char* out) const;

private:
    using Pair = std::array<char, 2>;
    /// Each character's value, shifted to its position in a group of four, or kNoValue.
    using Quads = std::array<std::array<std::uint32_t, 256>, 4>;
    static constexpr std::uint32_t kNoValue = std::uint32_t{1} << 31;

    template <unsigned Shift>
    std::size_t encodeSteps(const unsigned char* bytes, std::size_t size, char* out) const;
    template <unsigned Shift>
    std::size_t decodeSteps(const char* text, std::size_t size, unsigned char* out) const;

    unsigned shift_;
    std::vector<Pair> pairs_;
    Quads quads_{};
};
}
