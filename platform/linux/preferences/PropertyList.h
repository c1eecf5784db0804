#pragma once
#include "platform/foundation/Value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace vistrel {

/// Reads a property list in its XML or binary form; nothing when it is damaged.
[[nodiscard]] std::optional<Value> valueFromPropertyList(std::span<const std::byte> bytes);

/// The binary form, in which numbers keep every bit. Nulls inside are left out: the form has none.
/// Numbers that neither a 64-bit integer nor a double holds become the nearest double.
[[nodiscard]] std::vector<std::byte> propertyListFromValue(const Value& value);

}
