#include "ads/Utility/GADMacros.h"

#include "ads/json/GAD_ZelJSON.h"

#include <utility>

namespace vistrel {
std::optional<std::string> GADMacros::jsonify(const Value* object) {
    if (!object)
        return std::nullopt;
    return GAD_ZelJSON().stringWithObject(*object).text.value_or("");
}

std::optional<Value::Dictionary> GADMacros::readJson(std::optional<std::string_view> text) {
    GAD_ZelJSON::Reading reading = GAD_ZelJSON().objectWithString(text);
    if (!reading.value || !reading.value->isDictionary())
        return std::nullopt;
    return reading.value->dictionary();
}
}
