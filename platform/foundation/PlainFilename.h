#pragma once
#include <string>
#include <string_view>

namespace vistrel {

/// What remains of the text as a plain name, which may be nothing. Cleaning twice changes nothing.
[[nodiscard]] std::string cleanedFilename(std::string_view name);

}
