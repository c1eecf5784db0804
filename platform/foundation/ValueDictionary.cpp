#include "platform/foundation/ValueDictionary.h"

#include "platform/foundation/Value.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace vistrel {
namespace {
constexpr std::size_t kFewMembers = 16;

bool repeatsKeys(std::span<const ValueDictionary::Member> members) {
    for (std::size_t i = 1; i < members.size(); ++i) {
        const auto earlier = members.first(i);
        if (std::ranges::find(earlier, members[i].key, &ValueDictionary::Member::key) !=
            earlier.end())
            return true;
    }
    return false;
}
}

ValueDictionary::ValueDictionary(
    std::initializer_list<std::pair<std::string_view, Value>> members) {
    for (const auto& [key, value] : members)
        set(key, value);
}

ValueDictionary::ValueDictionary(std::vector<Member> members)
    : members_(std::move(members)) {
    if (members_.size() > kFewMembers || repeatsKeys(members_))
        mergeDuplicates();
}

/// Sorts instead of comparing every pair of keys: untrusted input may contain many.
void ValueDictionary::mergeDuplicates() {
    std::vector<std::size_t> places(members_.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    const auto keyAt = [this](std::size_t place) -> std::string_view {
        return members_[place].key;
    };
    std::ranges::stable_sort(places, {}, keyAt);
    std::vector<bool> dropped(members_.size());
    for (std::size_t i = 1, first = 0; i < places.size(); ++i) {
        if (keyAt(places[i]) != keyAt(places[first])) {
            first = i;
            continue;
        }
        members_[places[first]].value = std::move(members_[places[i]].value);
        dropped[places[i]] = true;
    }
    std::size_t place = 0;
    std::erase_if(members_, [&](const Member&) { return dropped[place++]; });
}

std::size_t ValueDictionary::size() const {
    return members_.size();
}

const Value* ValueDictionary::find(std::string_view key) const {
    const auto member = std::ranges::find(members_, key, &Member::key);
    return member == members_.end() ? nullptr : &member->value;
}

Value* ValueDictionary::find(std::string_view key) {
    return const_cast<Value*>(std::as_const(*this).find(key));
}

Value& ValueDictionary::set(std::string_view key, Value value) {
    if (Value* present = find(key))
        return *present = std::move(value);
    return members_.emplace_back(Member{std::string(key), std::move(value)}).value;
}

bool ValueDictionary::erase(std::string_view key) {
    return std::erase_if(
               members_, [key](const Member& member) { return member.key == key; }) != 0;
}

void ValueDictionary::clear() {
    members_.clear();
}

bool operator==(const ValueDictionary& a, const ValueDictionary& b) {
    return a.members_.size() == b.members_.size() && std::ranges::all_of(
                                                         a.members_,
                                                         [&b](const auto& member) {
                                                             const Value* other =
                                                                 b.find(member.key);
                                                             return other && *other == member.value;
                                                         });
}
}
