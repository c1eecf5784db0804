#pragma once
#include <array>
#include <string_view>

namespace vistrel::demo {

/// The texts and files of one of the menu's partner sites. Its name is in the settings.
struct PartnerContents {
    struct Item {
        std::string_view title;
        std::string_view extension; ///< ".mp4", ".m4v" or ".mp3"
    };

    std::string_view line;
    std::array<Item, 3> items;
};

/// In the order of their addresses, /partner/1/ to /partner/8/.
inline constexpr std::array<PartnerContents, 8> partnerContents = {{
    {"Newsreels and home movies that nobody owns any more.",
     {{{"Harbour Opening, Reel 1", ".mp4"},
       {"Harbour Opening, Reel 2", ".mp4"},
       {"A Summer on Eight Millimetres", ".m4v"}}}},
    {"Silent films from attics and flea markets, with a piano beside them.",
     {{{"The Lamplighter's Dog", ".mp4"},
       {"Market Day in the Rain", ".mp4"},
       {"Piano for Reel Two", ".mp3"}}}},
    {"Serials every Saturday, free like the air.",
     {{{"Captain Kettle, Chapter 1", ".m4v"},
       {"Captain Kettle, Chapter 2", ".mp4"},
       {"Captain Kettle, Chapter 3", ".mp4"}}}},
    {"Slow films for late hours.",
     {{{"Moth and Lamp", ".mp4"},
       {"Winter Bandstand", ".mp4"},
       {"Theme from Winter Bandstand", ".mp3"}}}},
    {"Student films, one a week.",
     {{{"Kite Season", ".mp4"}, {"Three Wet Dogs", ".m4v"}, {"Where the Bus Turns", ".mp4"}}}},
    {"Voices and foghorns from before the picture.",
     {{{"Foghorn at Five", ".mp3"},
       {"The Switchboard Hour", ".mp3"},
       {"Weather for Sailors", ".mp3"}}}},
    {"Film music without the films, and one film without its music.",
     {{{"Shellac Waltz", ".mp3"},
       {"Theme of the Tin Roof", ".mp3"},
       {"Clouds over the Weir", ".mp4"}}}},
    {"Three bands, one garden, one amplifier.",
     {{{"Ferry Songs, Side A", ".mp3"},
       {"Ferry Songs, Side B", ".mp3"},
       {"Live between the Beans", ".mp4"}}}},
}};
}
