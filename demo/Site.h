#pragma once
#include "demo/AdLog.h"
#include "demo/MediaStore.h"
#include "demo/Sessions.h"

#include <map>
#include <string>
#include <utility>

namespace vistrel::demo {

/// What the site remembers between requests.
struct Site {
    explicit Site(const std::string& mediaFolder)
        : media(mediaFolder) {}

    MediaStore media;
    Sessions members;  ///< sessions of /vip/
    Sessions rotating; ///< sessions of /rotate/, good for one visit

    /// How often each method and address (without its query) was requested.
    std::map<std::pair<std::string, std::string>, unsigned> hits;

    AdLog adLog;
    std::string ownAdFile; ///< served as the ad "own"; empty: none
};
}
