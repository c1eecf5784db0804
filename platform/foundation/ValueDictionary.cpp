#include "platform/foundation/ValueDictionary.h"

#include "platform/foundation/Value.h"
#include "platform/foundation/ValueStorage.h"

#include <algorithm>
#include <new>

namespace vistrel {
namespace {
using Member = ValueDictionary::Member;

Member* membersOf(const ValueSlot& slot) {
    return reinterpret_cast<Member*>(slot.slots());
}

ValueSlot resized(const ValueSlot& slot, std::size_t size) {
    return ValueSlot::external(ValueKind::Dictionary, slot.slots(), size,
                               ValueSlot::Holding::Owned);
}
}

ValueDictionary::ValueDictionary(std::initializer_list<std::pair<std::string_view, Value>> members)
    : ValueDictionary() {
    reserve(members.size());
    for (const auto& [key, value] : members)
        set(key, value);
}

ValueDictionary::ValueDictionary(const ValueDictionary& other)
    : slot_(valueStorage::copied(other.slot_)) {}

ValueDictionary::ValueDictionary(ValueDictionary&& other) noexcept
    : slot_(other.slot_) {
    other.slot_ = ValueSlot::empty(ValueKind::Dictionary);
}

ValueDictionary& ValueDictionary::operator=(const ValueDictionary& other) {
    return *this = ValueDictionary(other);
}

ValueDictionary& ValueDictionary::operator=(ValueDictionary&& other) noexcept {
    std::swap(slot_, other.slot_);
    return *this;
}

ValueDictionary::~ValueDictionary() {
    valueStorage::destroy(slot_);
}

ValueDictionary::MutableIterator ValueDictionary::begin() {
    valueStorage::open(slot_);
    return MutableIterator(membersOf(slot_));
}
ValueDictionary::MutableIterator ValueDictionary::end() {
    valueStorage::open(slot_);
    return MutableIterator(membersOf(slot_) + size());
}

const Value* ValueDictionary::find(std::string_view key) const {
    const std::size_t place = valueMembers::find(slot_, key);
    return place == valueMembers::kAbsent ? nullptr : &membersOf(slot_)[place].value;
}

Value* ValueDictionary::find(std::string_view key) {
    valueStorage::open(slot_);
    return const_cast<Value*>(std::as_const(*this).find(key));
}

Value& ValueDictionary::set(std::string_view key, Value value) {
    if (Value* present = find(key)) {
        *present = std::move(value);
        return *present;
    }
    // The key may be a view into a member that moves when room is made.
    const ValueSlot ownedKey = valueStorage::ownedText(ValueKind::String, key);
    valueStorage::makeRoom(slot_);
    const std::size_t place = size();
    Member* member = new (membersOf(slot_) + place) Member{ownedKey, std::move(value)};
    slot_ = resized(slot_, place + 1);
    valueMembers::addToIndex(slot_, place);
    return member->value;
}

bool ValueDictionary::erase(std::string_view key) {
    valueStorage::open(slot_);
    const std::size_t place = valueMembers::find(slot_, key);
    if (place == valueMembers::kAbsent)
        return false;
    ValueSlot* slots = slot_.slots();
    valueStorage::destroy(slots[2 * place]);
    valueStorage::destroy(slots[2 * place + 1]);
    std::copy(slots + 2 * place + 2, slots + 2 * size(), slots + 2 * place);
    slot_ = resized(slot_, size() - 1);
    valueMembers::rebuildIndex(slot_);
    return true;
}

void ValueDictionary::reserve(std::size_t capacity) {
    valueStorage::open(slot_);
    valueStorage::reserve(slot_, capacity);
}

void ValueDictionary::clear() {
    valueStorage::destroy(slot_);
}

bool operator==(const ValueDictionary& a, const ValueDictionary& b) {
    return valueStorage::areEqual(a.slot_, b.slot_);
}
}
