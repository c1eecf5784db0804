#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// Decodes percent escapes; a "%" that starts no escape is kept.
[[nodiscard]] std::string percentDecoded(std::string_view text);

/// As above, but nothing when a "%" starts no escape.
[[nodiscard]] std::optional<std::string> strictlyPercentDecoded(std::string_view text);

/// Escapes what is not allowed in the path of an address.
[[nodiscard]] std::string percentEncodedPath(std::string_view path);

/// Escapes all but letters, digits and "-._~": suits any part of an address.
[[nodiscard]] std::string percentEncodedComponent(std::string_view text);

}
