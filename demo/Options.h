#pragma once
#include <optional>
#include <span>
#include <string>

namespace vistrel::demo {

/// The parsed command line.
struct Options {
    unsigned port = 0; ///< 0: any free one
    std::string mediaFolder;
    std::string addressFile; ///< gets the address once the site is ready; empty: none
    std::string ownAdFile;   ///< page served as the ad "own"; empty: none
    bool exitWithParent = false;
    bool list = false;
    bool help = false;
};

/// Nothing on a mistake; `complaint` then describes it in one line.
std::optional<Options> parseOptions(std::span<char* const> arguments, std::string& complaint);

std::string helpText();
}
