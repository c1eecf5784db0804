#pragma once
#include <string>
#include <string_view>

namespace vistrel {

/// The text with each byte that is not UTF-8 replaced by U+FFFD: file names may be any bytes.
std::string validText(std::string_view text);

}
