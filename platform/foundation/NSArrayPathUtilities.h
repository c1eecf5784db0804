#pragma once
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// The part after the last dot; empty without a dot, or when it is the first or the last
/// character.
std::string_view pathExtension(std::string_view name);
/// The name without its extension and the dot before it.
std::string_view stringByDeletingPathExtension(std::string_view name);
/// The names whose extension equals one of the given strings exactly, in their order.
std::vector<std::string> pathsMatchingExtensions(std::span<const std::string> names,
                                                 std::span<const std::string_view> extensions);
/// The same for a list that is no longer needed: the names are moved.
std::vector<std::string> pathsMatchingExtensions(std::vector<std::string>&& names,
                                                 std::span<const std::string_view> extensions);

}
