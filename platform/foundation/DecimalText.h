#pragma once
#include <cstdint>
#include <string_view>

namespace vistrel {
/// Whether the whole text is a number of the JSON grammar.
[[nodiscard]] bool isDecimalText(std::string_view text);

/// The nearest double; 0 for an empty text, infinity beyond the range.
[[nodiscard]] double decimalTextAsDouble(std::string_view text);

/// The number truncated to an integer and clamped to the range.
[[nodiscard]] std::int64_t decimalTextAsInteger(std::string_view text);

/// Whether two numbers are the same decimal: 1.50, 15e-1 and 1.5 are.
[[nodiscard]] bool decimalTextsAreEqual(std::string_view a, std::string_view b);
}
