#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Wide scanning for the JSON reader and writer. Every function has a portable form and, where
/// vector instructions are available, an equivalent faster one.
namespace vistrel::jsonScan {

/// Whether a byte ends a run of plain characters inside a string.
constexpr bool isSpecial(char c) {
    return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
}

/// The standard white-space class.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

namespace portable {
constexpr std::uint64_t kOnes = 0x0101010101010101U;
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

/// Nonzero when a byte of the word is special.
constexpr std::uint64_t specialBytes(std::uint64_t word) {
    const std::uint64_t quote = word ^ kOnes * '"';
    const std::uint64_t backslash = word ^ kOnes * '\\';
    return (((word - kOnes * 0x20) & ~word) | ((quote - kOnes) & ~quote) |
            ((backslash - kOnes) & ~backslash)) &
           kHighBits;
}

template <typename Word>
Word load(const char* at) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

/// The first special byte at or after a position; the text ends in at least 16 zero bytes.
inline const char* plainEnd(const char* at) {
    while (specialBytes(load<std::uint64_t>(at)) == 0)
        at += 8;
    while (!isSpecial(*at))
        ++at;
    return at;
}

/// Copies 16 bytes; returns whether all of them are plain.
inline bool copyPlainBlock(char* to, const char* from) {
    const auto first = load<std::uint64_t>(from);
    const auto second = load<std::uint64_t>(from + 8);
    std::memcpy(to, &first, 8);
    std::memcpy(to + 8, &second, 8);
    return (specialBytes(first) | specialBytes(second)) == 0;
}

/// Bit n is set when byte n after the position is a digit; examines 32 bytes.
inline std::uint32_t digits(const char* at) {
    std::uint32_t mask = 0;
    for (unsigned i = 0; i < 32; ++i)
        mask |= static_cast<std::uint32_t>(at[i] >= '0' && at[i] <= '9') << i;
    return mask;
}
}

#if defined(__SSE2__)
namespace vector {
inline __m128i load(const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

inline unsigned specialBytes(__m128i bytes) {
    const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
    const __m128i quote = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('"'));
    const __m128i backslash = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
    return static_cast<unsigned>(
        _mm_movemask_epi8(_mm_or_si128(control, _mm_or_si128(quote, backslash))));
}

inline const char* plainEnd(const char* at) {
    for (;; at += 16)
        if (const unsigned mask = specialBytes(load(at)))
            return at + std::countr_zero(mask);
}

inline bool copyPlainBlock(char* to, const char* from) {
    const __m128i bytes = load(from);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
    return specialBytes(bytes) == 0;
}

inline unsigned digitsOf(__m128i bytes) {
    const __m128i offset = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    return static_cast<unsigned>(
        _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(offset, _mm_set1_epi8(9)), offset)));
}

inline std::uint32_t digits(const char* at) {
    return digitsOf(load(at)) | digitsOf(load(at + 16)) << 16;
}
}
using vector::copyPlainBlock;
using vector::digits;
using vector::plainEnd;
#else
using portable::copyPlainBlock;
using portable::digits;
using portable::plainEnd;
#endif

/// Copies fewer than 16 bytes; returns whether all of them are plain.
inline bool copyShortPlain(char* to, const char* from, std::size_t size) {
    using portable::load;
    using portable::specialBytes;
    if (size >= 8) {
        const auto first = load<std::uint64_t>(from);
        const auto last = load<std::uint64_t>(from + size - 8);
        std::memcpy(to, &first, 8);
        std::memcpy(to + size - 8, &last, 8);
        return (specialBytes(first) | specialBytes(last)) == 0;
    }
    if (size >= 4) {
        const auto first = load<std::uint32_t>(from);
        const auto last = load<std::uint32_t>(from + size - 4);
        std::memcpy(to, &first, 4);
        std::memcpy(to + size - 4, &last, 4);
        return specialBytes(first | std::uint64_t{last} << 32) == 0;
    }
    if (size == 0)
        return true;
    const char first = from[0];
    const char middle = from[size / 2];
    const char last = from[size - 1];
    to[0] = first;
    to[size / 2] = middle;
    to[size - 1] = last;
    return !(isSpecial(first) || isSpecial(middle) || isSpecial(last));
}
}
