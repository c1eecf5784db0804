#pragma once
#include <string>

namespace vistrel {

/// Where the program finds its own files and the user's.
struct ProgramPaths {
    std::string resources;    ///< pictures and Info.plist
    std::string translations; ///< message catalogues by language
    std::string settingsFile; ///< $XDG_CONFIG_HOME/vistrel/vistrel.ini

    /// Resources are in "share" beside the program (the build tree) or in the data folder of the
    /// installation, relative to the program.
    static ProgramPaths find();
};

}
