#include "ads/Utility/GADTextUtilities.h"

#include <algorithm>

namespace vistrel {

std::string gadLowerCased(std::string text) {
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return text;
}

std::vector<std::string> gadComponents(std::string_view text, char separator) {
    std::vector<std::string> components;
    for (std::size_t at = 0; at <= text.size();) {
        const auto end = std::min(text.find(separator, at), text.size());
        components.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return components;
}

std::string gadTextForKey(std::string_view key, const Value::Dictionary& dictionary) {
    const Value* value = dictionary.find(key);
    return value ? std::string(value->string()) : std::string();
}

}
