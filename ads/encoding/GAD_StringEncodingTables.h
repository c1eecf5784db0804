#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vistrel {
/// The inner loops of GAD_StringEncoding for alphabets of 16, 32 and 64 characters: eight
/// characters a step, two by two when encoding, through tables that are made beforehand. They do
/// whole steps from the front of their input and leave the rest to the general path; for other
/// alphabets they do nothing.
class GAD_StringEncodingTables {
public:
    /// A value, or a negative number, for every byte.
    using ReverseMap = std::array<std::int8_t, 256>;

    GAD_StringEncodingTables(unsigned shift, std::string_view alphabet);

    void setReverseMap(const ReverseMap& values);

    /// How many bytes were encoded; a multiple of the bits of a character.
    std::size_t encode(const unsigned char* bytes, std::size_t size, char* out) const;
    /// How many characters were decoded, none of them without a value; a multiple of eight.
    /// Writes nothing beyond what all `size` characters would give.
    std::size_t decode(const char* text, std::size_t size, unsigned char* out) const;

private:
    using Pair = std::array<char, 2>;
    /// Each character's value where it belongs among the four of a quad, or kNoValue.
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
