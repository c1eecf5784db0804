#include "platform/foundation/ValueArray.h"

#include "platform/foundation/Value.h"
#include "platform/foundation/ValueStorage.h"

#include <algorithm>
#include <new>
#include <utility>

namespace vistrel {
namespace {
using Holding = ValueSlot::Holding;

Value* valuesOf(const ValueSlot& slot) {
    return reinterpret_cast<Value*>(slot.slots());
}

ValueSlot resized(const ValueSlot& slot, std::size_t size) {
    return ValueSlot::external(ValueKind::Array, slot.slots(), size, Holding::Owned);
}
}

ValueArray::ValueArray(std::initializer_list<Value> values)
    : ValueArray() {
    reserve(values.size());
    for (const Value& value : values)
        push_back(value);
}

ValueArray::ValueArray(const ValueArray& other)
    : slot_(valueStorage::copied(other.slot_)) {}

ValueArray::ValueArray(ValueArray&& other) noexcept
    : slot_(other.slot_) {
    other.slot_ = ValueSlot::empty(ValueKind::Array);
}

ValueArray& ValueArray::operator=(const ValueArray& other) {
    return *this = ValueArray(other);
}

ValueArray& ValueArray::operator=(ValueArray&& other) noexcept {
    std::swap(slot_, other.slot_);
    return *this;
}

ValueArray::~ValueArray() {
    valueStorage::destroy(slot_);
}

Value* ValueArray::begin() {
    valueStorage::open(slot_);
    return valuesOf(slot_);
}

Value* ValueArray::end() {
    return begin() + size();
}
Value& ValueArray::operator[](std::size_t index) {
    return begin()[index];
}

void ValueArray::push_back(Value value) {
    valueStorage::open(slot_);
    valueStorage::makeRoom(slot_);
    new (slot_.slots() + size()) Value(std::move(value));
    slot_ = resized(slot_, size() + 1);
}

void ValueArray::reserve(std::size_t capacity) {
    valueStorage::open(slot_);
    valueStorage::reserve(slot_, capacity);
}

void ValueArray::removeAt(std::size_t index) {
    std::move(begin() + index + 1, end(), begin() + index);
    valueStorage::destroy(slot_.slots()[size() - 1]);
    slot_ = resized(slot_, size() - 1);
}

void ValueArray::clear() {
    valueStorage::destroy(slot_);
}

bool operator==(const ValueArray& a, const ValueArray& b) {
    return valueStorage::areEqual(a.slot_, b.slot_);
}
}
