#include "ads/encoding/GAD_StringEncodingBlocks.h"

#if defined(__x86_64__)
#include <immintrin.h>

#include <cstring>

// Every function here is compiled for AVX2 by its attribute. Those that are called from outside
// clear the upper halves of the registers themselves: not every optimisation level does, and plain
// vector code that follows would run several times slower.
#define VISTREL_AVX2 __attribute__((target("avx2")))
#define VISTREL_AVX2_INLINE __attribute__((target("avx2"), always_inline)) inline

namespace vistrel::stringEncodingBlocks::avx2 {
namespace {
using Register = __m256i;

VISTREL_AVX2_INLINE __m128i half(const void* at) {
    return _mm_loadu_si128(static_cast<const __m128i*>(at));
}

VISTREL_AVX2_INLINE Register inBothHalves(const void* at) {
    return _mm256_broadcastsi128_si256(half(at));
}

VISTREL_AVX2_INLINE Register twoHalves(const void* low, const void* high) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(half(low)), half(high), 1);
}

/// Looks 32 indices up in an alphabet, sixteen characters at a time.
template <unsigned Shift>
struct Alphabet {
    Register rows[1 << (Shift - 4)];

    VISTREL_AVX2_INLINE explicit Alphabet(const char* characters) {
        for (std::size_t i = 0; i < sizeof rows / sizeof *rows; ++i)
            rows[i] = inBothHalves(characters + 16 * i);
    }

    VISTREL_AVX2_INLINE Register of(Register index) const {
        const Register first = _mm256_shuffle_epi8(rows[0], index);
        if constexpr (Shift == 4) {
            return first;
        } else {
            const Register bit4 = _mm256_slli_epi16(index, 3);
            const Register low =
                _mm256_blendv_epi8(first, _mm256_shuffle_epi8(rows[1], index), bit4);
            if constexpr (Shift == 5) {
                return low;
            } else {
                const Register high = _mm256_blendv_epi8(_mm256_shuffle_epi8(rows[2], index),
                                                         _mm256_shuffle_epi8(rows[3], index), bit4);
                return _mm256_blendv_epi8(low, high, _mm256_slli_epi16(index, 2));
            }
        }
    }
};

/// The first 16 bytes as 32 indices of 4 bits.
VISTREL_AVX2_INLINE Register split4(const unsigned char* bytes) {
    const Register words = _mm256_cvtepu8_epi16(half(bytes));
    return _mm256_and_si256(
        _mm256_or_si256(_mm256_srli_epi16(words, 4), _mm256_slli_epi16(words, 8)),
        _mm256_set1_epi8(15));
}

/// The first 20 bytes as 32 indices of 5 bits: each index is shifted down from the two bytes that
/// it is spread over. The upper half is loaded from as far ahead as it can be without reading on.
VISTREL_AVX2_INLINE Register split5(const unsigned char* bytes) {
    const Register input = twoHalves(bytes, bytes + 4);
    const Register factors = _mm256_broadcastsi128_si256(
        _mm_setr_epi16(1 << 5, 1 << 10, 1 << 7, 1 << 12, 1 << 9, 1 << 6, 1 << 11, 1 << 8));
    const Register places = _mm256_setr_epi8(1, 0, 1, 0, 2, 1, 2, 1, 3, 2, 4, 3, 4, 3, 5, 4, 7, 6,
                                             7, 6, 8, 7, 8, 7, 9, 8, 10, 9, 10, 9, 11, 10);
    // The last index of the second group of a half is whole within its last byte; what the shuffle
    // takes for the byte behind it does not matter.
    const Register laterPlaces = _mm256_add_epi8(places, _mm256_set1_epi8(5));
    const Register first = _mm256_mulhi_epu16(_mm256_shuffle_epi8(input, places), factors);
    const Register second = _mm256_mulhi_epu16(_mm256_shuffle_epi8(input, laterPlaces), factors);
    const Register mask = _mm256_set1_epi16(31);
    return _mm256_packus_epi16(_mm256_and_si256(first, mask), _mm256_and_si256(second, mask));
}

/// The first 24 bytes as 32 indices of 6 bits.
VISTREL_AVX2_INLINE Register split6(const unsigned char* bytes) {
    const Register places = _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10, 5,
                                             4, 6, 5, 8, 7, 9, 8, 11, 10, 12, 11, 14, 13, 15, 14);
    const Register input = _mm256_shuffle_epi8(twoHalves(bytes, bytes + 8), places);
    const Register odd = _mm256_mulhi_epu16(_mm256_and_si256(input, _mm256_set1_epi32(0x0FC0FC00)),
                                            _mm256_set1_epi32(0x04000040));
    const Register even = _mm256_mullo_epi16(_mm256_and_si256(input, _mm256_set1_epi32(0x003F03F0)),
                                             _mm256_set1_epi32(0x01000010));
    return _mm256_or_si256(odd, even);
}

template <unsigned Shift>
VISTREL_AVX2_INLINE Register split(const unsigned char* bytes) {
    if constexpr (Shift == 4)
        return split4(bytes);
    else if constexpr (Shift == 5)
        return split5(bytes);
    else
        return split6(bytes);
}

template <unsigned Shift>
VISTREL_AVX2 std::size_t encodeBlocks(const char* characters, const unsigned char* bytes,
                                      std::size_t size, char* out) {
    constexpr std::size_t kStep = std::size_t{4} * Shift;
    if (size < kStep)
        return portable::blocksFor(Shift).encode(characters, bytes, size, out);
    const Alphabet<Shift> alphabet(characters);
    const auto encodeAt = [&](std::size_t at) __attribute__((target("avx2"), always_inline)) {
        _mm256_storeu_si256(reinterpret_cast<Register*>(out + at * 8 / Shift),
                            alphabet.of(split<Shift>(bytes + at)));
    };
    std::size_t at = 0;
    for (; size - at >= kStep; at += kStep)
        encodeAt(at);
    // The last whole groups once more, together with those before them that fill a block.
    const std::size_t whole = size - size % kGroupBytes<Shift>;
    if (at != whole)
        encodeAt(whole - kStep);
    _mm256_zeroupper();
    return whole;
}

/// Looks 32 characters up among the values of the characters from blank on.
struct Values {
    /// Sixteen characters a row. Values plus one, so that what is not found comes out as -1.
    Register rows[6];
    bool controlsHaveNone;

    VISTREL_AVX2_INLINE explicit Values(const ReverseMap& values) {
        const Register one = _mm256_set1_epi8(1);
        for (std::size_t i = 0; i < 6; ++i)
            rows[i] =
                _mm256_max_epi8(_mm256_add_epi8(inBothHalves(values.data() + 32 + 16 * i), one),
                                _mm256_setzero_si256());
        const Register controls = twoHalves(values.data(), values.data() + 16);
        controlsHaveNone = _mm256_movemask_epi8(controls) == -1;
    }

    VISTREL_AVX2_INLINE Register of(Register characters) const {
        Register found = _mm256_setzero_si256();
        for (unsigned i = 0; i < 6; ++i) {
            // Only a character of the row itself stays below 0x80, where the shuffle looks it up.
            const Register place = _mm256_adds_epu8(
                _mm256_xor_si256(characters, _mm256_set1_epi8(static_cast<char>(32 + 16 * i))),
                _mm256_set1_epi8(0x70));
            found = _mm256_or_si256(found, _mm256_shuffle_epi8(rows[i], place));
        }
        return _mm256_sub_epi8(found, _mm256_set1_epi8(1));
    }
};

/// Stores the first bytes of either half one after the other, and nothing behind them.
template <unsigned Bytes>
VISTREL_AVX2_INLINE void storeHalves(Register bytes, unsigned char* out) {
    const __m128i high = _mm256_extracti128_si256(bytes, 1);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(bytes));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + Bytes), high);
    if constexpr (Bytes > 8) {
        const auto rest = static_cast<std::uint32_t>(_mm_extract_epi32(high, 2));
        std::memcpy(out + Bytes + 8, &rest, Bytes - 8);
    }
}

/// Joins 32 values to 4 * Shift bytes.
template <unsigned Shift>
VISTREL_AVX2_INLINE void join(Register values, unsigned char* out) {
    const Register pairs =
        _mm256_maddubs_epi16(values, _mm256_set1_epi16(static_cast<short>(0x100 | 1 << Shift)));
    if constexpr (Shift == 4) {
        storeHalves<8>(_mm256_packus_epi16(pairs, pairs), out);
    } else {
        const Register fours =
            _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x10000 | 1 << 2 * Shift));
        if constexpr (Shift == 5) {
            const Register eights =
                _mm256_or_si256(_mm256_slli_epi64(fours, 20), _mm256_srli_epi64(fours, 32));
            const __m128i places =
                _mm_setr_epi8(4, 3, 2, 1, 0, 12, 11, 10, 9, 8, -1, -1, -1, -1, -1, -1);
            storeHalves<10>(_mm256_shuffle_epi8(eights, _mm256_broadcastsi128_si256(places)), out);
        } else {
            const __m128i places =
                _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
            storeHalves<12>(_mm256_shuffle_epi8(fours, _mm256_broadcastsi128_si256(places)), out);
        }
    }
}

template <unsigned Shift>
VISTREL_AVX2 std::size_t decodeBlocks(const ReverseMap& map, const char* text, std::size_t size,
                                      unsigned char* out) {
    constexpr std::size_t kStep = 32;
    if (size < kStep)
        return portable::blocksFor(Shift).decode(map, text, size, out);
    const Values values(map);
    const auto decodeAt = [&](std::size_t at) __attribute__((target("avx2"), always_inline)) {
        const Register found =
            values.of(_mm256_loadu_si256(reinterpret_cast<const Register*>(text + at)));
        const bool good = _mm256_movemask_epi8(found) == 0;
        if (good)
            join<Shift>(found, out + at * Shift / 8);
        return good;
    };
    std::size_t at = 0;
    while (values.controlsHaveNone && size - at >= kStep && decodeAt(at))
        at += kStep;
    // The last whole groups once more, together with those before them that fill a block; without
    // the group that padding may end in.
    std::size_t whole = size - size % kGroupCharacters<Shift>;
    if (map[static_cast<unsigned char>(text[whole - 1])] < 0)
        whole -= kGroupCharacters<Shift>;
    if (values.controlsHaveNone && size - at < kStep && at < whole && whole >= kStep &&
        decodeAt(whole - kStep))
        at = whole;
    _mm256_zeroupper();
    return at;
}

struct Form {
    template <unsigned Shift>
    static constexpr auto* encode = &encodeBlocks<Shift>;
    template <unsigned Shift>
    static constexpr auto* decode = &decodeBlocks<Shift>;
};
}

bool isAvailable() {
    static const bool available = __builtin_cpu_supports("avx2");
    return available;
}

Blocks blocksFor(unsigned shift) {
    return blocksOf<Form>(shift);
}
}
#else
namespace vistrel::stringEncodingBlocks::avx2 {
bool isAvailable() {
    return false;
}
Blocks blocksFor(unsigned shift) {
    return portable::blocksFor(shift);
}
}
#endif
