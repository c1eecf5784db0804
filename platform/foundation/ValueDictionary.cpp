#include "platform/foundation/ValueDictionary.h"

#include "platform/foundation/Value.h"

#include <algorithm>

namespace vistrel {
ValueDictionary::ValueDictionary() = default;
ValueDictionary::ValueDictionary(
    std::initializer_list<std::pair<std::string_view, Value>> members) {
    for (const auto& [key, value] : members)
        set(key, value);
}
ValueDictionary::ValueDictionary(const ValueDictionary& other) = default;
ValueDictionary::ValueDictionary(ValueDictionary&& other) noexcept = default;
ValueDictionary& ValueDictionary::operator=(const ValueDictionary& other) = default;
ValueDictionary& ValueDictionary::operator=(ValueDictionary&& other) noexcept = default;
ValueDictionary::~ValueDictionary() = default;

std::size_t ValueDictionary::size() const {
    return members_.size();
}
ValueDictionary::ConstIterator ValueDictionary::begin() const {
    return ConstIterator(members_.data());
}
ValueDictionary::ConstIterator ValueDictionary::end() const {
    return ConstIterator(members_.data() + members_.size());
}
ValueDictionary::MutableIterator ValueDictionary::begin() {
    return MutableIterator(members_.data());
}
ValueDictionary::MutableIterator ValueDictionary::end() {
    return MutableIterator(members_.data() + members_.size());
}

const Value* ValueDictionary::find(std::string_view key) const {
    for (const Member& member : members_) {
        if (member.key == key)
            return &member.value;
    }
    return nullptr;
}

Value* ValueDictionary::find(std::string_view key) {
    return const_cast<Value*>(std::as_const(*this).find(key));
}

Value& ValueDictionary::set(std::string_view key, Value value) {
    if (Value* present = find(key)) {
        *present = std::move(value);
        return *present;
    }
    members_.push_back(Member{std::string(key), std::move(value)});
    return members_.back().value;
}

bool ValueDictionary::erase(std::string_view key) {
    return std::erase_if(members_, [&](const Member& member) { return member.key == key; }) != 0;
}

void ValueDictionary::reserve(std::size_t capacity) {
    members_.reserve(capacity);
}
void ValueDictionary::clear() {
    members_.clear();
}

bool operator==(const ValueDictionary& a, const ValueDictionary& b) {
    return a.size() == b.size() && std::ranges::all_of(a.members_, [&](const auto& member) {
               const Value* other = b.find(member.key);
               return other && *other == member.value;
           });
}
}
