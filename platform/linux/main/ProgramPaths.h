#pragma once
#include <string>

namespace vistrel {

/// Where the program finds its own files and the user's.
struct ProgramPaths {
    std::string resources;    ///< pictures and Info.plist
    std::string translations; ///< message catalogues by language
    std::string settingsFile; ///< $XDG_CONFIG_HOME/vistrel/vistrel.ini

    /// Resources stand beside the program ("share/vistrel", as built) or where it is installed
    /// ("../share/vistrel").
    static ProgramPaths find();
};

}
