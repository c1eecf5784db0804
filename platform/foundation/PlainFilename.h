#pragma once
#include <string>
#include <string_view>

namespace vistrel {

/// The text reduced to a plain name, possibly empty. Cleaning twice changes nothing.
[[nodiscard]] std::string cleanedFilename(std::string_view name);

}
