#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace vistrel {

inline constexpr std::size_t kLongestFilename = 255; ///< bytes

/// What may be shown of a file's name: without controls, unseen characters and the marks that
/// change the reading direction, behind which an extension could hide.
[[nodiscard]] std::string legibleFilename(std::string_view name);

/// The text reduced to a plain name, possibly empty. Cleaning twice changes nothing.
[[nodiscard]] std::string cleanedFilename(std::string_view name);

}
