#include "ads/encoding/GAD_StringEncodingBlocks.h"

#if defined(__x86_64__)
// GCC 12 takes the registers that its own header leaves undefined for mistakes.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuninitialized"
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <immintrin.h>
#pragma GCC diagnostic pop

#include <array>
#include <cstdint>

// Every function here is compiled for AVX-512 VBMI by its attribute. Those that are called from
// outside clear the upper halves of the registers themselves, as in the AVX2 form.
#define VISTREL_VBMI __attribute__((target("avx512vbmi,avx512bw")))
#define VISTREL_VBMI_INLINE __attribute__((target("avx512vbmi,avx512bw"), always_inline)) inline

namespace vistrel::stringEncodingBlocks::vbmi {
namespace {
/// 64 characters make a block, and eight of them a lane of 64 bits, which holds `Shift` bytes as
/// one big-endian number in its low end.
using Register = __m512i;
using Bytes = std::array<std::uint8_t, 64>;
constexpr std::size_t kCharacters = 64;

/// Of which byte of the block each byte of the lanes is made.
template <unsigned Shift>
constexpr Bytes bytesToLanes() {
    Bytes from{};
    for (unsigned i = 0; i < 64; ++i)
        from[i] = static_cast<std::uint8_t>(i % 8 < Shift ? i / 8 * Shift + Shift - 1 - i % 8 : 0);
    return from;
}

/// Where the bytes of the joined groups stand. A group of values fills as many bytes as it has
/// characters and holds its number big-endian in their low end.
template <unsigned Shift>
constexpr Bytes groupsToBytes() {
    constexpr unsigned kBytes = kGroupBytes<Shift>;
    Bytes from{};
    for (unsigned i = 0; i < 8 * Shift; ++i)
        from[i] = static_cast<std::uint8_t>(i / kBytes * kGroupCharacters<Shift> + kBytes - 1 -
                                            i % kBytes);
    return from;
}

/// Where in a lane the index of each of its characters begins, in bits.
template <unsigned Shift>
constexpr Bytes indexPlaces() {
    Bytes places{};
    for (unsigned i = 0; i < 64; ++i)
        places[i] = static_cast<std::uint8_t>(Shift * (7 - i % 8));
    return places;
}

VISTREL_VBMI_INLINE Register load(const void* at) {
    return _mm512_loadu_si512(at);
}

constexpr __mmask64 firstOf(std::size_t count) {
    return count >= 64 ? ~__mmask64{0} : (__mmask64{1} << count) - 1;
}

/// Repeated until it fills a register, since what stands above an index is not cut off.
template <unsigned Shift>
VISTREL_VBMI_INLINE Register repeated(const char* alphabet) {
    if constexpr (Shift == 4)
        return _mm512_broadcast_i32x4(_mm_loadu_si128(reinterpret_cast<const __m128i*>(alphabet)));
    else if constexpr (Shift == 5)
        return _mm512_broadcast_i64x4(
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(alphabet)));
    else
        return load(alphabet);
}

/// What is too short for a block. Not part of the loops, which it would cost registers.
template <unsigned Shift>
__attribute__((noinline)) std::size_t encodeShort(const char* alphabet, const unsigned char* bytes,
                                                  std::size_t size, char* out) {
    return avx2::blocksFor(Shift).encode(alphabet, bytes, size, out);
}

template <unsigned Shift>
__attribute__((noinline)) std::size_t decodeShort(const ReverseMap& map, const char* text,
                                                  std::size_t size, unsigned char* out) {
    return avx2::blocksFor(Shift).decode(map, text, size, out);
}

template <unsigned Shift>
VISTREL_VBMI std::size_t encodeBlocks(const char* alphabet, const unsigned char* bytes,
                                      std::size_t size, char* out) {
    static constexpr Bytes kToLanes = bytesToLanes<Shift>();
    static constexpr Bytes kPlaces = indexPlaces<Shift>();
    constexpr std::size_t kStep = std::size_t{8} * Shift;
    if (size < kStep)
        return encodeShort<Shift>(alphabet, bytes, size, out);
    const Register characters = repeated<Shift>(alphabet);
    const Register toLanes = load(kToLanes.data());
    const Register places = load(kPlaces.data());
    const auto encodeAt = [&](std::size_t at)
        __attribute__((target("avx512vbmi,avx512bw"), always_inline)) {
        const Register input = _mm512_maskz_loadu_epi8(firstOf(kStep), bytes + at);
        const Register lanes = _mm512_permutexvar_epi8(toLanes, input);
        const Register indices = _mm512_multishift_epi64_epi8(places, lanes);
        _mm512_storeu_si512(out + at * 8 / Shift, _mm512_permutexvar_epi8(indices, characters));
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

/// Joins the values of each group, in steps of two until the group is whole.
template <unsigned Shift>
VISTREL_VBMI_INLINE Register joinGroups(Register values) {
    const Register pairs =
        _mm512_maddubs_epi16(values, _mm512_set1_epi16(static_cast<short>(0x100 | 1 << Shift)));
    if constexpr (Shift == 4)
        return pairs;
    const Register fours = _mm512_madd_epi16(pairs, _mm512_set1_epi32(0x10000 | 1 << 2 * Shift));
    if constexpr (Shift == 6)
        return fours;
    return _mm512_or_si512(_mm512_slli_epi64(fours, 4 * Shift), _mm512_srli_epi64(fours, 32));
}

/// Joins 64 values to 8 * Shift bytes.
template <unsigned Shift>
VISTREL_VBMI_INLINE Register join(Register values) {
    static constexpr Bytes kToBytes = groupsToBytes<Shift>();
    return _mm512_permutexvar_epi8(load(kToBytes.data()), joinGroups<Shift>(values));
}

/// Stores the first 8 * Shift bytes, without the stores under a mask that some processors are slow
/// at.
template <unsigned Shift>
VISTREL_VBMI_INLINE void store(Register bytes, unsigned char* out) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm512_castsi512_si256(bytes));
    const __m128i rest = _mm512_extracti32x4_epi32(bytes, 2);
    if constexpr (Shift == 5)
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 32), rest);
    else if constexpr (Shift == 6)
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 32), rest);
}

template <unsigned Shift>
VISTREL_VBMI std::size_t decodeBlocks(const ReverseMap& map, const char* text, std::size_t size,
                                      unsigned char* out) {
    if (size < kCharacters)
        return decodeShort<Shift>(map, text, size, out);
    const Register low = load(map.data());
    const Register high = load(map.data() + 64);
    const auto decodeAt = [=](std::size_t at)
        __attribute__((target("avx512vbmi,avx512bw"), always_inline)) {
        const Register input = load(text + at);
        const Register found = _mm512_permutex2var_epi8(low, input, high);
        // What is not ASCII is not found in the map's first half, whatever comes out there.
        const bool good = _mm512_movepi8_mask(_mm512_or_si512(found, input)) == 0;
        if (good)
            store<Shift>(join<Shift>(found), out + at * Shift / 8);
        return good;
    };
    std::size_t at = 0;
    while (size - at >= kCharacters && decodeAt(at))
        at += kCharacters;
    // The last whole groups once more, together with those before them that fill a block.
    const std::size_t whole = size - size % kGroupCharacters<Shift>;
    if (size - at < kCharacters && at < whole && decodeAt(whole - kCharacters))
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
    static const bool available =
        __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512bw");
    return available;
}

Blocks blocksFor(unsigned shift) {
    return blocksOf<Form>(shift);
}
}
#else
namespace vistrel::stringEncodingBlocks::vbmi {
bool isAvailable() {
    return false;
}
Blocks blocksFor(unsigned shift) {
    return portable::blocksFor(shift);
}
}
#endif
