#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// The file name that a Content-Disposition header gives, in UTF-8 and not yet cleaned; nothing
/// when it gives none. The extended form (RFC 8187) precedes the plain one; one that is
/// malformed counts as absent. Plain names that are not UTF-8 are read as ISO-8859-1.
[[nodiscard]] std::optional<std::string> filenameOfContentDisposition(std::string_view header);

}
