#pragma once
#include <map>
#include <string>
#include <string_view>

namespace vistrel::demo {

using Fields = std::map<std::string, std::string, std::less<>>;

/// Undoes percent escapes; with `plusIsSpace` also the form's "+". A broken escape stays as it is.
std::string unescaped(std::string_view text, bool plusIsSpace = false);

/// Reads "a=1&b=2"; of a repeated name the first counts.
Fields formFields(std::string_view text);

/// Reads a Cookie header.
Fields cookieFields(std::string_view header);

/// The text with the five characters escaped that mean something in HTML.
std::string escapedForHtml(std::string_view text);

/// The decimal number, or `otherwise` when the text is not wholly one. A leading plus may stand
/// before it, also as the space that a query makes of it.
long long numberFrom(std::string_view text, long long otherwise);
}
