#pragma once
#include "platform/foundation/ValueSlot.h"

#include <cstddef>
#include <initializer_list>

namespace vistrel {
class Value;

/// A contiguous, growing sequence of values; what `Value::Array` names.
/// References into it live until it grows or shrinks.
class ValueArray {
public:
    ValueArray()
        : slot_(ValueSlot::empty(ValueKind::Array)) {}
    ValueArray(std::initializer_list<Value> values);
    ValueArray(const ValueArray& other);
    ValueArray(ValueArray&& other) noexcept;
    ValueArray& operator=(const ValueArray& other);
    ValueArray& operator=(ValueArray&& other) noexcept;
    ~ValueArray();

    [[nodiscard]] std::size_t size() const { return slot_.size(); }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] const Value* begin() const;
    [[nodiscard]] const Value* end() const;
    [[nodiscard]] Value* begin();
    [[nodiscard]] Value* end();
    /// The index must be below size().
    [[nodiscard]] const Value& operator[](std::size_t index) const;
    [[nodiscard]] Value& operator[](std::size_t index);

    void push_back(Value value);
    void reserve(std::size_t capacity);
    /// Removes one element; the later ones move up.
    void removeAt(std::size_t index);
    void clear();

    friend bool operator==(const ValueArray& a, const ValueArray& b);

private:
    friend class Value;

    ValueSlot slot_;
};
}
