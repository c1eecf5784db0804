#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vistrel {
enum class ValueKind : std::uint8_t {
    Null,
    Boolean,
    Number,
    String,
    Date,
    Data,
    Array,
    Dictionary
};

/// The sixteen bytes of a value, without ownership: copying one copies the bytes.
///
/// The last byte is the tag: the kind, and where the content is. A text of up to fifteen bytes and
/// every scalar stand in the slot itself. Anything else is a pointer and a 56-bit size: to memory
/// of the slot's own (`Owned`), or into a ValueDocument (`Shared`).
/// Fields are read and written as bytes, so that the same memory may be seen as a Value, a
/// ValueArray or a ValueDictionary.
class ValueSlot {
public:
    enum class Holding : std::uint8_t { Owned, Shared };
    static constexpr std::size_t kInlineCapacity = 15;

    static ValueSlot empty(ValueKind kind) {
        ValueSlot slot;
        std::memset(slot.bytes_, 0, sizeof slot.bytes_);
        slot.bytes_[kTag] = static_cast<unsigned char>(kind);
        return slot;
    }
    template <typename Scalar>
    static ValueSlot scalar(ValueKind kind, Scalar content) {
        ValueSlot slot = empty(kind);
        std::memcpy(slot.bytes_, &content, sizeof content);
        return slot;
    }
    /// The text must not be longer than kInlineCapacity.
    static ValueSlot inlineText(ValueKind kind, std::string_view text) {
        ValueSlot slot = empty(kind);
        if (!text.empty())
            std::memcpy(slot.bytes_, text.data(), text.size());
        slot.bytes_[kTag] |= static_cast<unsigned char>(text.size() << 4);
        return slot;
    }
    static ValueSlot external(ValueKind kind, const void* content, std::size_t size,
                              Holding holding) {
        ValueSlot slot;
        std::memcpy(slot.bytes_, &content, sizeof content);
        const std::uint64_t tag = static_cast<unsigned>(kind) | kExternalBit |
                                  (holding == Holding::Shared ? kSharedBit : 0U);
        slot.setMeta(kLittle ? std::uint64_t{size} | tag << 56 : std::uint64_t{size} << 8 | tag);
        return slot;
    }

    [[nodiscard]] ValueKind kind() const { return static_cast<ValueKind>(bytes_[kTag] & 7); }
    [[nodiscard]] bool isExternal() const { return (bytes_[kTag] & kExternalBit) != 0; }
    [[nodiscard]] bool isShared() const {
        return (bytes_[kTag] & (kExternalBit | kSharedBit)) == (kExternalBit | kSharedBit);
    }
    [[nodiscard]] bool isContainer() const { return kind() >= ValueKind::Array; }

    template <typename Scalar>
    [[nodiscard]] Scalar scalar() const {
        Scalar content;
        std::memcpy(&content, bytes_, sizeof content);
        return content;
    }
    /// The bytes of a text or data.
    [[nodiscard]] std::string_view text() const {
        if (isExternal())
            return {scalar<const char*>(), size()};
        return {reinterpret_cast<const char*>(bytes_), static_cast<std::size_t>(bytes_[kTag] >> 4)};
    }
    /// A container's slots, null when it has no memory. A dictionary's alternate key and value.
    [[nodiscard]] ValueSlot* slots() const { // The pointer itself is what is stored.
        return static_cast<ValueSlot*>(scalar<void*>());
    }
    /// Bytes of an external text, elements or members of a container.
    [[nodiscard]] std::size_t size() const {
        std::uint64_t meta;
        std::memcpy(&meta, bytes_ + 8, sizeof meta);
        return static_cast<std::size_t>(kLittle ? meta & kSizeMask : meta >> 8);
    }
    /// How many slots a container's content takes.
    [[nodiscard]] std::size_t slotCount() const {
        return kind() == ValueKind::Dictionary ? size() * 2 : size();
    }

private:
    static constexpr bool kLittle = std::endian::native == std::endian::little;
    static constexpr std::uint64_t kSizeMask = (std::uint64_t{1} << 56) - 1;
    static constexpr std::size_t kTag = 15;
    static constexpr unsigned char kExternalBit = 8;
    static constexpr unsigned char kSharedBit = 16;

    void setMeta(std::uint64_t meta) { std::memcpy(bytes_ + 8, &meta, sizeof meta); }

    alignas(8) unsigned char bytes_[16];
};
static_assert(sizeof(ValueSlot) == 16);
}
