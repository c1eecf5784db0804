#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace vistrel {

/// Removes the first character of a non-empty text; U+FFFD and one byte when it is not well-formed
/// UTF-8 (RFC 3629: overlong forms and surrogates are not).
char32_t takeUTF8Character(std::string_view& text);

/// Appends a character other than a surrogate.
void appendUTF8Character(std::string& text, char32_t character);

[[nodiscard]] bool isUTF8(std::string_view text);

/// The beginning of a text, of at most so many bytes, cut between characters.
[[nodiscard]] std::string_view shortenedUTF8(std::string_view text, std::size_t bytes);

/// Lower-cases Latin, Greek, Cyrillic and Armenian letters; other characters are unchanged.
[[nodiscard]] std::string lowercaseText(std::string_view text);

/// The text of ISO-8859-1 bytes.
[[nodiscard]] std::string textFromLatin1(std::string_view bytes);

}
