#pragma once
#include <string_view>

namespace vistrel {

/// Whether a file of the media type (in any case) may carry the extension, in small letters or in
/// capitals: mixed spellings are not looked for. True for types that are not known here.
[[nodiscard]] bool extensionFitsMediaType(std::string_view extension, std::string_view mimeType);

/// The usual extension; empty for types that are not known here.
[[nodiscard]] std::string_view extensionForMediaType(std::string_view mimeType);

}
