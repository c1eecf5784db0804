#include "tests/resources/SourceTexts.h"
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace vistrel {

namespace {

using Match = std::match_results<std::string_view::const_iterator>;

template <typename Take>
void forEachMatch(std::string_view source, const std::regex& pattern, Take take) {
    std::regex_iterator<std::string_view::const_iterator> next(source.begin(), source.end(),
                                                               pattern);
    for (const decltype(next) end; next != end; ++next) {
        take(*next);
    }
}

} // namespace

std::set<std::string> picturesNamedIn(std::string_view source) {
    static const std::regex fileName(R"re("([A-Za-z0-9]+\.(?:png|jpg))")re");
    static const std::regex bundlePath(R"re("([A-Za-z0-9]+)",\s*"(png|jpg)")re");
    static const std::regex playerPicture(R"re("(AudioPlayer[A-Za-z]+)")re");
    std::set<std::string> names;
    forEachMatch(source, fileName, [&](const Match& match) { names.insert(match[1].str()); });
    forEachMatch(source, bundlePath,
                 [&](const Match& match) { names.insert(match[1].str() + "." + match[2].str()); });
    forEachMatch(source, playerPicture,
                 [&](const Match& match) { names.insert(match[1].str() + ".png"); });
    return names;
}

std::set<std::string> textsLookedUpIn(std::string_view source) {
    static const std::regex lookUp(
        R"re((?:localizedStringForKeyValue|translated)\(\s*"([^"]+)")re");
    std::set<std::string> texts;
    forEachMatch(source, lookUp, [&](const Match& match) { texts.insert(match[1].str()); });
    return texts;
}

std::string sourcesOfFolder(const std::string& folder) {
    std::string all;
    const auto root = std::filesystem::path(VISTREL_SOURCE_DIR) / folder;
    if (!std::filesystem::is_directory(root)) {
        return all;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
            all += contentsOfFile(entry.path().string()) + "\n";
        }
    }
    return all;
}

std::string contentsOfFile(const std::string& path) {
    std::ostringstream contents;
    contents << std::ifstream(path, std::ios::binary).rdbuf();
    return contents.str();
}

} // namespace vistrel
