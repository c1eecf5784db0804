#include "platform/foundation/ValueStorage.h"

#include <array>

namespace vistrel::valueMembers {
namespace {
__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15U;

/// Differs from process to process where addresses do, so that colliding keys cannot be prepared.
std::uint64_t seed() {
    static const int anchor = 0;
    return reinterpret_cast<std::uintptr_t>(&anchor) * kMixer;
}

std::uint64_t mixed(std::uint64_t a, std::uint64_t b) {
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

template <typename Word>
std::uint64_t load(const char* at) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

std::uint32_t* indexOf(ValueSlot* slots) {
    return reinterpret_cast<std::uint32_t*>(slots + 2 * ValueBlock::of(slots)->capacity);
}

std::size_t indexSizeOf(ValueSlot* slots) {
    return ValueBlock::indexSize(ValueKind::Dictionary, ValueBlock::of(slots)->capacity);
}

std::size_t findLinearly(const ValueSlot* slots, std::size_t members, std::string_view key) {
    for (std::size_t place = 0; place < members; ++place) {
        if (slots[2 * place].text() == key)
            return place;
    }
    return kAbsent;
}

/// The index entry that holds the key, or the free one where it belongs.
std::uint32_t& entryFor(ValueSlot* slots, std::string_view key) {
    const std::size_t mask = indexSizeOf(slots) - 1;
    std::uint32_t* index = indexOf(slots);
    std::size_t at = hashOf(key) & mask;
    while (index[at] != 0 && slots[2 * (std::size_t{index[at]} - 1)].text() != key)
        at = (at + 1) & mask;
    return index[at];
}

std::size_t mergeIndexed(ValueSlot* slots, std::size_t members) {
    std::memset(indexOf(slots), 0, indexSizeOf(slots) * sizeof(std::uint32_t));
    std::size_t kept = 0;
    for (std::size_t place = 0; place < members; ++place) {
        std::uint32_t& entry = entryFor(slots, slots[2 * place].text());
        if (entry != 0) {
            slots[2 * (entry - 1) + 1] = slots[2 * place + 1];
            continue;
        }
        slots[2 * kept] = slots[2 * place];
        slots[2 * kept + 1] = slots[2 * place + 1];
        entry = static_cast<std::uint32_t>(++kept);
    }
    return kept;
}

/// Of the first and last eight bytes only. A key lies in a document's text, behind which there is
/// room to read on.
std::uint64_t sieveHashOf(std::string_view key) {
    const auto first = load<std::uint64_t>(key.data());
    if (key.size() > 8)
        return (first + load<std::uint64_t>(key.data() + key.size() - 8) * 3) * kMixer;
    // Two steps, as a shift by all 64 bits is not defined.
    const auto unused = static_cast<unsigned>(8 * (8 - key.size()));
    const std::uint64_t used = std::endian::native == std::endian::little
                                   ? first << unused / 2 << (unused - unused / 2)
                                   : first >> unused / 2 >> (unused - unused / 2);
    return (used + key.size()) * kMixer;
}

std::size_t mergeLinearly(ValueSlot* slots, std::size_t members) {
    // Nearly always no two keys share a bit of the sieve, and nothing needs to be compared.
    std::array<std::uint64_t, 8> sieve{};
    std::size_t kept = 0;
    for (std::size_t place = 0; place < members; ++place) {
        const std::string_view key = slots[2 * place].text();
        const std::uint64_t hash = sieveHashOf(key);
        std::uint64_t& word = sieve[hash >> 61];
        const std::uint64_t bit = std::uint64_t{1} << (hash >> 55 & 63);
        const std::size_t earlier = word & bit ? findLinearly(slots, kept, key) : kAbsent;
        word |= bit;
        if (earlier != kAbsent) {
            slots[2 * earlier + 1] = slots[2 * place + 1];
            continue;
        }
        if (kept != place) {
            slots[2 * kept] = slots[2 * place];
            slots[2 * kept + 1] = slots[2 * place + 1];
        }
        ++kept;
    }
    return kept;
}
}

std::uint64_t hashOf(std::string_view key) {
    const char* at = key.data();
    std::size_t left = key.size();
    std::uint64_t state = seed() ^ left;
    for (; left > 16; left -= 8, at += 8)
        state = mixed(load<std::uint64_t>(at) ^ kMixer, state ^ kMixer << 1);
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    if (left >= 8) {
        first = load<std::uint64_t>(at);
        last = load<std::uint64_t>(at + left - 8);
    } else if (left >= 4) {
        first = load<std::uint32_t>(at);
        last = load<std::uint32_t>(at + left - 4);
    } else if (left > 0) {
        first = static_cast<unsigned char>(at[0]);
        last = static_cast<std::uint64_t>(static_cast<unsigned char>(at[left / 2])) << 8 |
               static_cast<unsigned char>(at[left - 1]);
    }
    return mixed(first ^ kMixer, last ^ state);
}

std::size_t find(const ValueSlot& dictionary, std::string_view key) {
    ValueSlot* slots = dictionary.slots();
    if (!slots)
        return kAbsent;
    if (indexSizeOf(slots) == 0)
        return findLinearly(slots, dictionary.size(), key);
    const std::uint32_t entry = entryFor(slots, key);
    return entry == 0 ? kAbsent : entry - 1;
}

void addToIndex(const ValueSlot& dictionary, std::size_t place) {
    ValueSlot* slots = dictionary.slots();
    if (indexSizeOf(slots) != 0)
        entryFor(slots, slots[2 * place].text()) = static_cast<std::uint32_t>(place + 1);
}

void rebuildIndex(const ValueSlot& dictionary) {
    ValueSlot* slots = dictionary.slots();
    if (!slots || indexSizeOf(slots) == 0)
        return;
    std::memset(indexOf(slots), 0, indexSizeOf(slots) * sizeof(std::uint32_t));
    for (std::size_t place = 0; place < dictionary.size(); ++place)
        addToIndex(dictionary, place);
}

std::size_t mergeDuplicates(ValueSlot* slots, std::size_t members) {
    return indexSizeOf(slots) == 0 ? mergeLinearly(slots, members) : mergeIndexed(slots, members);
}
}
