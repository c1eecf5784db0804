#include "platform/foundation/ValueArray.h"

#include "platform/foundation/Value.h"

namespace vistrel {
ValueArray::ValueArray() = default;
ValueArray::ValueArray(std::initializer_list<Value> values)
    : items_(values) {}
ValueArray::ValueArray(const ValueArray& other) = default;
ValueArray::ValueArray(ValueArray&& other) noexcept = default;
ValueArray& ValueArray::operator=(const ValueArray& other) = default;
ValueArray& ValueArray::operator=(ValueArray&& other) noexcept = default;
ValueArray::~ValueArray() = default;

std::size_t ValueArray::size() const {
    return items_.size();
}
const Value* ValueArray::begin() const {
    return items_.data();
}
const Value* ValueArray::end() const {
    return items_.data() + items_.size();
}
Value* ValueArray::begin() {
    return items_.data();
}
Value* ValueArray::end() {
    return items_.data() + items_.size();
}
const Value& ValueArray::operator[](std::size_t index) const {
    return items_[index];
}
Value& ValueArray::operator[](std::size_t index) {
    return items_[index];
}
void ValueArray::push_back(Value value) {
    items_.push_back(std::move(value));
}
void ValueArray::reserve(std::size_t capacity) {
    items_.reserve(capacity);
}
void ValueArray::removeAt(std::size_t index) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
}
void ValueArray::clear() {
    items_.clear();
}

bool operator==(const ValueArray& a, const ValueArray& b) {
    return a.items_ == b.items_;
}
}
