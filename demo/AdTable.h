#pragma once
#include <span>
#include <string_view>

namespace vistrel::demo {

/// One ad that the server has. In every text "{site}" stands for the server's own address and
/// "{name}" for the ad's name.
struct Ad {
    std::string_view name;  ///< asked for as the ad unit, or as "ad" of the request's extras
    std::string_view title; ///< what it is there for
    std::string_view campaign = {}; ///< what it shows; empty: a strip with its title
    std::string_view link = {};     ///< where a touch on it leads
    std::string_view script = {};   ///< runs in its page
    std::string_view headers = {};  ///< of its answer, lines of "Name: value"
    std::string_view body = {};     ///< instead of a page made of the above
    int status = 200;
    bool fillsScreen = false; ///< drawn for a full screen instead of a banner
};

std::span<const Ad> ads();

/// The ad of that name. Any other unit gets one of the campaigns, in turn by `number`.
const Ad& adFor(std::string_view name, bool fillsScreen, long long number);

}
