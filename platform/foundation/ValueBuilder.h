#pragma once
#include "platform/foundation/Value.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {
/// Builds a tree of values bottom-up, for readers of text formats. Containers that are
/// open are kept on a stack; nothing recurses.
class ValueBuilder {
public:
    /// A value, an element of the open array, or the value of the last key.
    void push(Value value) { values_.push_back(std::move(value)); }
    void pushKey(std::string key) { keys_.push_back(std::move(key)); }

    void openArray() { open(Value::Kind::Array); }
    /// Keys and values are pushed in turn; a later member replaces an earlier one with its key.
    void openDictionary() { open(Value::Kind::Dictionary); }
    void close();
    /// Drops the innermost open container and everything pushed into it.
    void abandon();

    [[nodiscard]] std::size_t openContainers() const { return open_.size(); }
    [[nodiscard]] bool isInDictionary() const {
        return !open_.empty() && open_.back().kind == Value::Kind::Dictionary;
    }
    [[nodiscard]] std::string_view lastKey() const { return keys_.back(); }

    /// The finished value, once every container is closed.
    [[nodiscard]] Value finish() { return std::move(values_.front()); }

private:
    /// How much was on the stacks when the container was opened.
    struct Open {
        Value::Kind kind;
        std::size_t values;
        std::size_t keys;
    };

    void open(Value::Kind kind) { open_.push_back({kind, values_.size(), keys_.size()}); }

    std::vector<Value> values_;
    std::vector<std::string> keys_;
    std::vector<Open> open_;
};
}
