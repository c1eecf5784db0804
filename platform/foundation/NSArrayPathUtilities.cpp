#include "platform/foundation/NSArrayPathUtilities.h"

#include <algorithm>

namespace vistrel {

std::string_view pathExtension(std::string_view name) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return {};
    return name.substr(dot + 1);
}

std::string_view stringByDeletingPathExtension(std::string_view name) {
    const std::string_view extension = pathExtension(name);
    if (extension.empty())
        return name;
    return name.substr(0, name.size() - extension.size() - 1);
}

std::vector<std::string> pathsMatchingExtensions(std::span<const std::string> names,
                                                 std::span<const std::string_view> extensions) {
    std::vector<std::string> matching;
    for (const std::string& name : names) {
        const std::string_view extension = pathExtension(name);
        if (!extension.empty() && std::ranges::find(extensions, extension) != extensions.end())
            matching.push_back(name);
    }
    return matching;
}

}
