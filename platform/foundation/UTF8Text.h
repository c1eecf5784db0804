#pragma once
#include <string>
#include <string_view>

namespace vistrel {

/// Takes the first character off a non-empty text; U+FFFD, and one byte, where no well-formed UTF-8
/// character stands (RFC 3629: overlong forms and surrogates are not).
char32_t takeUTF8Character(std::string_view& text);

/// Appends a character that is no surrogate.
void appendUTF8Character(std::string& text, char32_t character);

[[nodiscard]] bool isUTF8(std::string_view text);

/// Lower case of the Latin, Greek, Cyrillic and Armenian letters; other characters stay.
[[nodiscard]] std::string lowercaseText(std::string_view text);

/// The text of ISO-8859-1 bytes.
[[nodiscard]] std::string textFromLatin1(std::string_view bytes);

}
