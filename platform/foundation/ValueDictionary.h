#pragma once
#include "platform/foundation/ValueSlot.h"

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace vistrel {
class Value;

/// String keys and their values in the order in which the keys were first set; what
/// `Value::Dictionary` names. Equality does not look at the order.
/// References and keys read from it live until an entry is added or removed.
class ValueDictionary {
public:
    /// What iteration yields: `for (const auto& [key, value] : dictionary)`.
    struct ConstEntry {
        std::string_view key;
        const Value& value;
    };
    struct Entry {
        std::string_view key;
        Value& value;
    };
    template <typename EntryType, typename Pointer>
    class Iterator;
    struct Member;
    using ConstIterator = Iterator<ConstEntry, const Member*>;
    using MutableIterator = Iterator<Entry, Member*>;

    ValueDictionary()
        : slot_(ValueSlot::empty(ValueKind::Dictionary)) {}
    /// A later member with the same key replaces the earlier one's value.
    ValueDictionary(std::initializer_list<std::pair<std::string_view, Value>> members);
    ValueDictionary(const ValueDictionary& other);
    ValueDictionary(ValueDictionary&& other) noexcept;
    ValueDictionary& operator=(const ValueDictionary& other);
    ValueDictionary& operator=(ValueDictionary&& other) noexcept;
    ~ValueDictionary();

    [[nodiscard]] std::size_t size() const { return slot_.size(); }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] ConstIterator begin() const;
    [[nodiscard]] ConstIterator end() const;
    [[nodiscard]] MutableIterator begin();
    [[nodiscard]] MutableIterator end();

    /// Null when the key is absent.
    [[nodiscard]] const Value* find(std::string_view key) const;
    [[nodiscard]] Value* find(std::string_view key);
    [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// Replaces the value of a key that is there, in its place; appends otherwise.
    Value& set(std::string_view key, Value value);
    /// Whether the key was there. The order of the others is kept.
    bool erase(std::string_view key);
    void reserve(std::size_t capacity);
    void clear();

    friend bool operator==(const ValueDictionary& a, const ValueDictionary& b);

private:
    friend class Value;

    ValueSlot slot_;
};
}
