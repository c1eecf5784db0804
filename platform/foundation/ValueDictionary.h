#pragma once
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel {
class Value;

/// String keys and their values in the order in which the keys were first set; what
/// `Value::Dictionary` is. Equality ignores the order. Look-up is linear: meant for
/// tens of keys. References are valid until a member is added or removed.
class ValueDictionary {
public:
    /// `for (const auto& [key, value] : dictionary)`
    struct Member;
    using ConstIterator = std::vector<Member>::const_iterator;

    // Defined where Member is complete, in Value.h.
    ValueDictionary() noexcept;
    ValueDictionary(const ValueDictionary& other);
    ValueDictionary(ValueDictionary&& other) noexcept;
    ValueDictionary& operator=(const ValueDictionary& other);
    ValueDictionary& operator=(ValueDictionary&& other) noexcept;
    ~ValueDictionary();
    /// A later member with the same key replaces the earlier one's value.
    ValueDictionary(std::initializer_list<std::pair<std::string_view, Value>> members);
    explicit ValueDictionary(std::vector<Member> members);

    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] bool empty() const { return members_.empty(); }
    [[nodiscard]] ConstIterator begin() const { return members_.begin(); }
    [[nodiscard]] ConstIterator end() const { return members_.end(); }

    /// Null when the key is absent.
    [[nodiscard]] const Value* find(std::string_view key) const;
    [[nodiscard]] Value* find(std::string_view key);
    [[nodiscard]] bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// Replaces the value of an existing key in place; appends otherwise.
    Value& set(std::string_view key, Value value);
    /// Whether the key existed. The others keep their order.
    bool erase(std::string_view key);
    void clear();

    friend bool operator==(const ValueDictionary& a, const ValueDictionary& b);

private:
    friend class Value;

    void mergeDuplicates();

    std::vector<Member> members_;
};
}
