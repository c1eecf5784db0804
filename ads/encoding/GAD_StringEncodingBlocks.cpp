#include "ads/encoding/GAD_StringEncodingBlocks.h"

namespace vistrel::stringEncodingBlocks {
namespace {
template <unsigned Shift>
std::size_t encodeGroups(const char* alphabet, const unsigned char* bytes, std::size_t size,
                         char* out) {
    constexpr unsigned kMask = (1U << Shift) - 1;
    std::size_t at = 0;
    for (; size - at >= kGroupBytes<Shift>; at += kGroupBytes<Shift>) {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < kGroupBytes<Shift>; ++i)
            bits = bits << 8 | bytes[at + i];
        for (std::size_t i = 0; i < kGroupCharacters<Shift>; ++i)
            *out++ = alphabet[bits >> Shift * (kGroupCharacters<Shift> - 1 - i) & kMask];
    }
    return at;
}

template <unsigned Shift>
std::size_t decodeGroups(const ReverseMap& values, const char* text, std::size_t size,
                         unsigned char* out) {
    std::size_t at = 0;
    for (; size - at >= kGroupCharacters<Shift>; at += kGroupCharacters<Shift>) {
        std::uint64_t bits = 0;
        int all = 0;
        for (std::size_t i = 0; i < kGroupCharacters<Shift>; ++i) {
            const std::int8_t value = values[static_cast<unsigned char>(text[at + i])];
            all |= value;
            bits = bits << Shift | static_cast<unsigned>(value);
        }
        if (all < 0)
            break;
        for (std::size_t i = 0; i < kGroupBytes<Shift>; ++i)
            *out++ = static_cast<unsigned char>(bits >> 8 * (kGroupBytes<Shift> - 1 - i));
    }
    return at;
}
}

Blocks blocksFor(unsigned shift) {
    switch (shift) {
    case 4:
        return {encodeGroups<4>, decodeGroups<4>};
    case 5:
        return {encodeGroups<5>, decodeGroups<5>};
    case 6:
        return {encodeGroups<6>, decodeGroups<6>};
    default:
        return {
            [](const char*, const unsigned char*, std::size_t, char*) { return std::size_t{0}; },
            [](const ReverseMap&, const char*, std::size_t, unsigned char*) {
                return std::size_t{0};
            }};
    }
}
}
