#pragma once
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace vistrel {
/// The ad library's two JSON calls.
class GADMacros {
public:
    /// The JSON text of a dictionary or array; an empty string for any other value, nothing for
    /// null.
    [[nodiscard]] static std::optional<std::string> jsonify(const Value* object);
    /// The dictionary in the text; empty when there is no text, it does not parse or it contains
    /// anything else.
    [[nodiscard]] static std::optional<Value::Dictionary>
    readJson(std::optional<std::string_view> text);
};
}
