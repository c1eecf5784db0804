#pragma once
#include <span>
#include <string_view>

namespace vistrel::demo {

/// One ad of the server. In every text "{site}" is the server's address and
/// "{name}" the ad's name.
struct Ad {
    std::string_view name;  ///< requested as the ad unit, or as "ad" in the request's extras
    std::string_view title; ///< its purpose
    std::string_view campaign = {}; ///< what it shows; empty: a strip with its title
    std::string_view link = {};     ///< where a touch leads
    std::string_view script = {};   ///< runs in its page
    std::string_view headers = {};  ///< of its response, lines of "Name: value"
    std::string_view body = {};     ///< replaces the page made of the above
    int status = 200;
    bool fillsScreen = false; ///< a full screen, not a banner
};

std::span<const Ad> ads();

/// The ad of that name. Any other unit gets one of the campaigns, by `number` in turn.
const Ad& adFor(std::string_view name, bool fillsScreen, long long number);

}
