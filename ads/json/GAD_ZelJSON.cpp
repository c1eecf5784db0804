#include "ads/json/GAD_ZelJSON.h"

#include "ads/json/GAD_ZelJSONReader.h"
#include "ads/json/GAD_ZelJSONWriter.h"

namespace vistrel {
GAD_ZelJSON::Reading GAD_ZelJSON::fragmentWithString(std::optional<std::string_view> text) const {
    if (!text)
        return {std::nullopt, zelJSONError(GAD_ZelJSONErrorCode::NoInput, "Input was 'nil'")};
    GAD_ZelJSONReader reader(*text, maxDepth_);
    std::optional<Value> value = reader.read();
    return {std::move(value), reader.error()};
}

GAD_ZelJSON::Reading GAD_ZelJSON::objectWithString(std::optional<std::string_view> text) const {
    Reading reading = fragmentWithString(text);
    if (reading.value && !reading.value->isArray() && !reading.value->isDictionary()) {
        reading.value.reset();
        reading.error =
            zelJSONError(GAD_ZelJSONErrorCode::NotAContainer, "Valid fragment, but not JSON");
    }
    return reading;
}

GAD_ZelJSON::Writing GAD_ZelJSON::stringWithFragment(const Value& fragment) const {
    GAD_ZelJSONWriter writer({.humanReadable = humanReadable_, .sortKeys = sortKeys_});
    return {writer.write(fragment), nullptr};
}

GAD_ZelJSON::Writing GAD_ZelJSON::stringWithObject(const Value& object) const {
    if (!object.isArray() && !object.isDictionary())
        return {std::nullopt,
                zelJSONError(GAD_ZelJSONErrorCode::NotAContainer, "Not valid type for JSON")};
    return stringWithFragment(object);
}
}
