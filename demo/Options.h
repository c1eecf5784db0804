#pragma once
#include <optional>
#include <span>
#include <string>

namespace vistrel::demo {

/// What the command line asks for.
struct Options {
    unsigned port = 0; ///< 0: any free one
    std::string mediaFolder;
    std::string addressFile; ///< where the address is written once the site answers; empty: none
    std::string ownAdFile;   ///< page served as the ad "own"; empty: none
    bool exitWithParent = false;
    bool list = false;
    bool help = false;
};

/// None when something is wrong; `complaint` then says what in one line.
std::optional<Options> parseOptions(std::span<char* const> arguments, std::string& complaint);

std::string helpText();
}
