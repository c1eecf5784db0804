#include "platform/foundation/ValueBuilder.h"

#include <iterator>

namespace vistrel {
void ValueBuilder::close() {
    const Open container = open_.back();
    const auto values = values_.begin() + static_cast<std::ptrdiff_t>(container.values);
    Value closed;
    if (container.kind == Value::Kind::Array) {
        closed = Value::Array(std::move_iterator(values), std::move_iterator(values_.end()));
    } else {
        std::vector<Value::Dictionary::Member> members;
        members.reserve(keys_.size() - container.keys);
        for (std::size_t i = container.keys; i < keys_.size(); ++i)
            members.push_back({std::move(keys_[i]), std::move(values[i - container.keys])});
        closed = Value::Dictionary(std::move(members));
    }
    abandon();
    push(std::move(closed));
}

void ValueBuilder::abandon() {
    values_.resize(open_.back().values);
    keys_.resize(open_.back().keys);
    open_.pop_back();
}
}
