#pragma once
#include <map>
#include <string>
#include <string_view>

namespace vistrel::demo {

using Fields = std::map<std::string, std::string, std::less<>>;

/// Decodes percent escapes, and with `plusIsSpace` a form's "+". Malformed escapes are kept.
std::string unescaped(std::string_view text, bool plusIsSpace = false);

/// Reads "a=1&b=2"; the first of a repeated name counts.
Fields formFields(std::string_view text);

/// Reads a Cookie header.
Fields cookieFields(std::string_view header);

/// The text with HTML's five special characters escaped.
std::string escapedForHtml(std::string_view text);

/// The decimal number, or `otherwise` when the text is not one. It may have a leading plus,
/// or the space that a query turns it into.
long long numberFrom(std::string_view text, long long otherwise);
}
