#pragma once
#include "platform/foundation/ValueDocument.h"
#include "platform/foundation/ValueSlot.h"

#include <cstdint>

namespace vistrel {
/// What stands in memory before a container's slots. A dictionary with room for more than
/// kLargestUnindexed members also has a hash index behind them: the places of its keys plus one.
struct ValueBlock {
    /// The document that a shared block is part of, or that an owned block keeps alive because
    /// views into its former shared content may still be around; null for none.
    ValueDocument* document;
    /// Elements or members that there is room for.
    std::size_t capacity;

    static constexpr std::size_t kLargestUnindexed = 16;

    static ValueBlock* of(ValueSlot* slots) { return reinterpret_cast<ValueBlock*>(slots) - 1; }
    [[nodiscard]] ValueSlot* slots() { return reinterpret_cast<ValueSlot*>(this + 1); }

    /// Entries of the index of a dictionary of that capacity, a power of two; 0 for no index.
    static std::size_t indexSize(ValueKind kind, std::size_t capacity) {
        return kind == ValueKind::Dictionary && capacity > kLargestUnindexed
                   ? std::bit_ceil(capacity * 2)
                   : 0;
    }
    /// Bytes of a block with its content and index.
    static std::size_t byteSize(ValueKind kind, std::size_t capacity) {
        const std::size_t slots = kind == ValueKind::Dictionary ? capacity * 2 : capacity;
        return sizeof(ValueBlock) + slots * sizeof(ValueSlot) +
               indexSize(kind, capacity) * sizeof(std::uint32_t);
    }
};
static_assert(sizeof(ValueBlock) == 16);

/// What the value classes do with their slots. Nothing here recurses, however deep the values.
namespace valueStorage {
/// A slot that owns a copy of the text.
[[nodiscard]] ValueSlot ownedText(ValueKind kind, std::string_view text);
/// A slot that owns what a value equal to the given one needs. Shared containers stay shared.
[[nodiscard]] ValueSlot copied(const ValueSlot& slot);
/// Frees what an owning slot owns and empties the slot.
void destroy(ValueSlot& slot);
/// Makes a shared container's own slots owned, so that they can be changed.
void open(ValueSlot& container);
/// Makes room for that many elements or members in an owned container.
void reserve(ValueSlot& container, std::size_t capacity);
/// Makes room for one more element or member.
void makeRoom(ValueSlot& container);
[[nodiscard]] bool areEqual(const ValueSlot& a, const ValueSlot& b);
}

/// The members of a dictionary's slot.
namespace valueMembers {
constexpr std::size_t kAbsent = ~std::size_t{0};

[[nodiscard]] std::uint64_t hashOf(std::string_view key);
/// The place of a key among the members, or kAbsent.
[[nodiscard]] std::size_t find(const ValueSlot& dictionary, std::string_view key);
/// Adds the member at a place to the index, where there is one.
void addToIndex(const ValueSlot& dictionary, std::size_t place);
/// Makes the index anew from the members.
void rebuildIndex(const ValueSlot& dictionary);
/// In a block of a document that is being built, lets the last of several members with one key
/// replace the first and drops it, and makes the index. The number of members that are left.
[[nodiscard]] std::size_t mergeDuplicates(ValueSlot* slots, std::size_t members);
}
}
