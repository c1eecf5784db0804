#pragma once
#include <string_view>

namespace vistrel {

/// Whether a file of the media type (in any case) may have the extension, in lower or in upper
/// case; mixed case does not count. True for unknown types.
[[nodiscard]] bool extensionFitsMediaType(std::string_view extension, std::string_view mimeType);

/// The usual extension; empty for unknown types.
[[nodiscard]] std::string_view extensionForMediaType(std::string_view mimeType);

}
