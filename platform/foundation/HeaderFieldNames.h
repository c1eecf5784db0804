#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel {

/// Names of HTTP header fields compare without case.
[[nodiscard]] bool headerFieldNamesAreEqual(std::string_view a, std::string_view b);

/// The value of the first field of that name, empty when absent.
[[nodiscard]] std::string
valueOfHeaderField(const std::vector<std::pair<std::string, std::string>>& fields,
                   std::string_view name);

}
