#include "demo/Request.h"

#include <algorithm>
#include <cctype>

namespace vistrel::demo {
namespace {
bool equalInAnyCase(std::string_view one, std::string_view other) {
    return std::equal(
        one.begin(), one.end(), other.begin(), other.end(),
        [](char a, char b) {
            return std::tolower(static_cast<unsigned char>(a)) ==
                   std::tolower(static_cast<unsigned char>(b));
        });
}
}

std::string_view Request::header(std::string_view name) const {
    for (const auto& [known, value] : headers)
        if (equalInAnyCase(known, name))
            return value;
    return {};
}

std::optional<std::string> Request::parameter(std::string_view name) const {
    const auto found = query.find(name);
    return found == query.end() ? std::nullopt : std::optional(found->second);
}

std::string Request::cookie(std::string_view name) const {
    const Fields cookies = cookieFields(header("Cookie"));
    const auto found = cookies.find(name);
    return found == cookies.end() ? std::string() : found->second;
}
}
