#pragma once
#include <set>
#include <string>
#include <string_view>

namespace vistrel {

/// The names of pictures that a source text mentions: "Name.png", a bundle path asked for as
/// ("Name", "jpg"), and the music player's pictures, which are named without their extension.
std::set<std::string> picturesNamedIn(std::string_view source);

/// The texts that a source looks up in the localised strings.
std::set<std::string> textsLookedUpIn(std::string_view source);

/// All sources and headers of a folder of the repository, and of those under it, one after the
/// other.
std::string sourcesOfFolder(const std::string& folder);

/// A whole file; empty when it cannot be read.
std::string contentsOfFile(const std::string& path);

} // namespace vistrel
