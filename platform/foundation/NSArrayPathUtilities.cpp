#include "platform/foundation/NSArrayPathUtilities.h"

#include <algorithm>
#include <iterator>
#include <utility>

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

namespace {
bool hasExtensionIn(std::string_view name, std::span<const std::string_view> extensions) {
    const std::string_view extension = pathExtension(name);
    return !extension.empty() && std::ranges::find(extensions, extension) != extensions.end();
}
}

std::vector<std::string> pathsMatchingExtensions(std::span<const std::string> names,
                                                 std::span<const std::string_view> extensions) {
    std::vector<std::string> matching;
    std::ranges::copy_if(names, std::back_inserter(matching), [extensions](const auto& name) {
        return hasExtensionIn(name, extensions);
    });
    return matching;
}

std::vector<std::string> pathsMatchingExtensions(std::vector<std::string>&& names,
                                                 std::span<const std::string_view> extensions) {
    std::erase_if(names,
                  [extensions](const auto& name) { return !hasExtensionIn(name, extensions); });
    return std::move(names);
}

}
