#pragma once
#include "demo/Text.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel::demo {

using HeaderLines = std::vector<std::pair<std::string, std::string>>;

/// One request, parsed and unescaped, as the pages see it.
struct Request {
    std::string method;
    std::string path;     ///< unescaped
    std::string rawPath;  ///< as sent
    std::string rawQuery; ///< as sent, without "?"
    Fields query;
    Fields form; ///< fields of a posted form
    HeaderLines headers;

    /// The value of a header, by case-insensitive name; empty when absent.
    std::string_view header(std::string_view name) const;

    /// A query parameter; nothing when absent.
    std::optional<std::string> parameter(std::string_view name) const;

    /// A cookie's value; empty when absent.
    std::string cookie(std::string_view name) const;
};
}
