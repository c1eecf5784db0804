#include "ads/encoding/GAD_StringEncodingTables.h"

#include <bit>
#include <cstring>

namespace vistrel {
namespace {
/// Reads eight bytes, the first into the number's highest byte.
std::uint64_t loadBigEndian(const void* at) {
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

void storeBigEndian(void* at, std::uint64_t word) {
    word = std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
    std::memcpy(at, &word, sizeof word);
}
}

GAD_StringEncodingTables::GAD_StringEncodingTables(unsigned shift, std::string_view alphabet)
    : shift_(shift) {
    if (shift < 4 || shift > 6)
        return;
    pairs_.reserve(alphabet.size() * alphabet.size());
    for (const char first : alphabet)
        for (const char second : alphabet)
            pairs_.push_back({first, second});
}

void GAD_StringEncodingTables::setReverseMap(const ReverseMap& values) {
    for (unsigned place = 0; place < quads_.size(); ++place) {
        for (std::size_t byte = 0; byte < values.size(); ++byte)
            quads_[place][byte] = values[byte] < 0 ? kNoValue
                                                   : static_cast<std::uint32_t>(values[byte])
                                                         << shift_ * (3 - place);
    }
}

std::size_t GAD_StringEncodingTables::encode(const unsigned char* bytes, std::size_t size,
                                             char* out) const {
    switch (shift_) {
    case 4:
        return encodeSteps<4>(bytes, size, out);
    case 5:
        return encodeSteps<5>(bytes, size, out);
    case 6:
        return encodeSteps<6>(bytes, size, out);
    default:
        return 0;
    }
}

std::size_t GAD_StringEncodingTables::decode(const char* text, std::size_t size,
                                             unsigned char* out) const {
    switch (shift_) {
    case 4:
        return decodeSteps<4>(text, size, out);
    case 5:
        return decodeSteps<5>(text, size, out);
    case 6:
        return decodeSteps<6>(text, size, out);
    default:
        return 0;
    }
}

template <unsigned Shift>
std::size_t GAD_StringEncodingTables::encodeSteps(const unsigned char* bytes, std::size_t size,
                                                  char* out) const {
    constexpr unsigned kPairBits = 2 * Shift;
    std::size_t at = 0;
    for (; size - at >= sizeof(std::uint64_t); at += Shift) {
        const std::uint64_t bits = loadBigEndian(bytes + at);
        for (unsigned i = 1; i <= 4; ++i, out += sizeof(Pair)) {
            const Pair& pair = pairs_[bits >> (64 - kPairBits * i) & ((1U << kPairBits) - 1)];
            std::memcpy(out, pair.data(), sizeof(Pair));
        }
    }
    return at;
}

template <unsigned Shift>
std::size_t GAD_StringEncodingTables::decodeSteps(const char* text, std::size_t size,
                                                  unsigned char* out) const {
    // A step stores a whole word; this many characters decode to at least eight bytes.
    constexpr std::size_t kRoom = 16;
    const auto quadAt = [this](const char* at) {
        std::uint32_t quad = 0;
        for (unsigned i = 0; i < 4; ++i)
            quad |= quads_[i][static_cast<unsigned char>(at[i])];
        return quad;
    };
    std::size_t at = 0;
    for (; size - at >= kRoom; at += 8, out += Shift) {
        const std::uint64_t first = quadAt(text + at);
        const std::uint64_t second = quadAt(text + at + 4);
        if (((first | second) & kNoValue) != 0)
            break;
        storeBigEndian(out, (first << 4 * Shift | second) << (64 - 8 * Shift));
    }
    return at;
}
}
