#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel {

/// Names of HTTP header fields are case-insensitive.
[[nodiscard]] bool headerFieldNamesAreEqual(std::string_view a, std::string_view b);

/// The values of all fields of that name, in order.
[[nodiscard]] std::vector<std::string>
valuesOfHeaderField(const std::vector<std::pair<std::string, std::string>>& fields,
                    std::string_view name);

/// The same as one string, joined with ", " (RFC 9110, 5.3); empty when absent.
[[nodiscard]] std::string
valueOfHeaderField(const std::vector<std::pair<std::string, std::string>>& fields,
                   std::string_view name);

}
