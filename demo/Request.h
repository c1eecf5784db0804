#pragma once
#include "demo/Text.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel::demo {

using HeaderLines = std::vector<std::pair<std::string, std::string>>;

/// One request, read and unescaped, as the pages see it.
struct Request {
    std::string method;
    std::string path;     ///< unescaped
    std::string rawPath;  ///< as it was sent
    std::string rawQuery; ///< as it was sent, without "?"
    Fields query;
    Fields form; ///< fields of a posted form
    HeaderLines headers;

    /// The value of a header, its name in any case; empty when it was not sent.
    std::string_view header(std::string_view name) const;

    /// A query parameter; none when it was not given.
    std::optional<std::string> parameter(std::string_view name) const;

    /// A cookie's value; empty when it was not sent.
    std::string cookie(std::string_view name) const;
};
}
