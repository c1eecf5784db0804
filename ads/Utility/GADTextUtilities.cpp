#include "ads/Utility/GADTextUtilities.h"

#include "platform/foundation/UTF8Text.h"

#include <algorithm>

namespace vistrel {

std::string gadLogText(std::string_view text, std::size_t mostCharacters) {
    std::string line;
    for (; !text.empty() && mostCharacters > 0; --mostCharacters) {
        const char32_t character = takeUTF8Character(text);
        const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
        appendUTF8Character(line, isControl ? U' ' : character);
    }
    return text.empty() ? line : line + "...";
}

std::string gadLowerCased(std::string text) {
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
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
