#pragma once
#include "platform/foundation/Value.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// A page's text as one line for the log: without control characters, cut after so many characters.
std::string gadLogText(std::string_view text, std::size_t mostCharacters = 1000);

/// The text with the letters A to Z in lower case.
std::string gadLowerCased(std::string text);

/// The pieces between the separators, including empty ones.
std::vector<std::string> gadComponents(std::string_view text, char separator);

/// The key's text; empty when there is none.
std::string gadTextForKey(std::string_view key, const Value::Dictionary& dictionary);

}
