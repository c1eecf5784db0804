#pragma once
#include <span>
#include <string>
#include <string_view>

namespace vistrel::demo {

/// An invented shop, film festival or record label, and the look of its ads.
struct Campaign {
    std::string_view name; ///< in addresses
    std::string_view headline;
    std::string_view line;
    std::string_view button;
    std::string_view colours; ///< background of its ads, CSS
    std::string_view accent;  ///< top of the button, CSS
    std::string_view shade;   ///< bottom of the button, CSS
    std::string_view picture; ///< SVG markup in a box of 50 by 50
    std::string_view story;   ///< a paragraph for its pages
};

std::span<const Campaign> campaigns();
/// Null for an unknown name.
const Campaign* campaignNamed(std::string_view name);

/// The page of a 320 x 50 banner. `link` is its address, unescaped; `script` runs in it.
std::string bannerPage(const Campaign& campaign, std::string_view link, std::string_view script);
/// The same for a test ad: a strip with its title.
std::string stripPage(std::string_view title, std::string_view link, std::string_view script);
/// A full screen: picture, story, then the given markup.
std::string posterPage(const Campaign& campaign, std::string_view rows, std::string_view script);
/// A full-width button for posters.
std::string posterButton(std::string_view link, std::string_view text);

}
