#pragma once
#include <optional>
#include <span>
#include <string>

namespace vistrel {

/// The parsed command line.
struct CommandLine {
    std::string site;          ///< address of the content site; empty: from the settings
    std::string adServer;      ///< address of the ad server; empty: from the settings
    std::string openAddress;   ///< of a page or a media file to open; empty: the menu
    std::string deviceRoot;    ///< empty: the default
    double scale = 0;          ///< 0: what fits the monitor
    std::string tourDirectory; ///< where the guided tour saves its pictures; empty: no tour
    bool serveToBrowser = false;
    bool careful = false; ///< careful manners; see settings/Manners.h

    enum class Action { Run, ShowHelp, ShowVersion, Refuse };
    Action action = Action::Run;
    std::string refusal; ///< one line that says what is wrong, for Refuse

    /// `arguments` without the program's name.
    static CommandLine parse(std::span<char* const> arguments);
    static std::string helpText();
};

}
