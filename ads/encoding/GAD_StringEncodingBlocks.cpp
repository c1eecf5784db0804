#include "ads/encoding/GAD_StringEncodingBlocks.h"

namespace vistrel::stringEncodingBlocks {
namespace portable {
namespace {
template <unsigned Shift>
constexpr std::size_t kGroupBytes = Shift == 4   ? 1
                                    : Shift == 5 ? 5
                                                 : 3;
template <unsigned Shift>
constexpr std::size_t kGroupCharacters = kGroupBytes<Shift> * 8 / Shift;

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

std::size_t encode(unsigned shift, const char* alphabet, const unsigned char* bytes,
                   std::size_t size, char* out) {
    switch (shift) {
    case 4:
        return encodeGroups<4>(alphabet, bytes, size, out);
    case 5:
        return encodeGroups<5>(alphabet, bytes, size, out);
    case 6:
        return encodeGroups<6>(alphabet, bytes, size, out);
    default:
        return 0;
    }
}

std::size_t decode(unsigned shift, const ReverseMap& values, const char* text, std::size_t size,
                   unsigned char* out) {
    switch (shift) {
    case 4:
        return decodeGroups<4>(values, text, size, out);
    case 5:
        return decodeGroups<5>(values, text, size, out);
    case 6:
        return decodeGroups<6>(values, text, size, out);
    default:
        return 0;
    }
}
}

std::size_t encode(unsigned shift, const char* alphabet, const unsigned char* bytes,
                   std::size_t size, char* out) {
    if (!avx2::isAvailable())
        return portable::encode(shift, alphabet, bytes, size, out);
    // Either does all whole groups, but blocks only when there are enough for one.
    const std::size_t done = avx2::encode(shift, alphabet, bytes, size, out);
    return done ? done : portable::encode(shift, alphabet, bytes, size, out);
}

std::size_t decode(unsigned shift, const ReverseMap& values, const char* text, std::size_t size,
                   unsigned char* out) {
    std::size_t done = 0;
    if (avx2::isAvailable())
        done = avx2::decode(shift, values, text, size, out);
    // What is less than a group is for the general path.
    if (size - done < 2)
        return done;
    return done + portable::decode(shift, values, text + done, size - done, out + done * shift / 8);
}
}
