#pragma once
#include <array>
#include <string_view>

namespace vistrel::demo {

/// A small film or music site that stands for one of the menu's partner rows.
struct PartnerSite {
    struct Item {
        std::string_view fileStem;
        std::string_view extension;
        std::string_view title;
        std::string_view note;
    };

    std::string_view name;
    std::string_view line; ///< what the site says of itself
    std::array<Item, 3> items;
};

/// In the order of their addresses, /partner/1/ to /partner/8/.
inline constexpr std::array<PartnerSite, 8> partnerSites = {{
    {"Lantern Reels",
     "Silent films from attics and flea markets, with a piano beside them.",
     {{{"lantern-reel", ".mp4", "The Lamplighter's Dog", "Short film, MP4"},
       {"lantern-reel", ".mp4", "Market Day in the Rain", "Short film, MP4"},
       {"lantern-reel", ".mp3", "Piano for Reel Two", "Music, MP3"}}}},
    {"Nickel Matinee",
     "Serials every Saturday, free like the air.",
     {{{"matinee", ".m4v", "Captain Kettle, Chapter 1", "Serial, M4V"},
       {"matinee", ".mp4", "Captain Kettle, Chapter 2", "Serial, MP4"},
       {"matinee", ".mp4", "Captain Kettle, Chapter 3", "Serial, MP4"}}}},
    {"Open Reel Archive",
     "Newsreels and home movies that nobody owns any more.",
     {{{"open-reel", ".mp4", "Harbour Opening, Reel 1", "Newsreel, MP4"},
       {"open-reel", ".mp4", "Harbour Opening, Reel 2", "Newsreel, MP4"},
       {"open-reel", ".m4v", "A Summer on Eight Millimetres", "Home movie, M4V"}}}},
    {"Moth & Lamp Cinema",
     "Slow films for late hours.",
     {{{"moth-and-lamp", ".mp4", "Moth and Lamp", "Feature trailer, MP4"},
       {"moth-and-lamp", ".mp4", "Winter Bandstand", "Feature trailer, MP4"},
       {"moth-and-lamp", ".mp3", "Theme from Winter Bandstand", "Music, MP3"}}}},
    {"Wax Cylinder Club",
     "Songs from before the microphone.",
     {{{"wax-cylinder", ".mp3", "Shellac Waltz", "Music, MP3"},
       {"wax-cylinder", ".mp3", "Song of the Switchboard", "Music, MP3"},
       {"wax-cylinder", ".mp3", "Two-Minute Polka", "Music, MP3"}}}},
    {"Harbour Street Records",
     "A cellar label with three bands and one amplifier.",
     {{{"harbour-street", ".mp3", "Ferry Songs, Side A", "Music, MP3"},
       {"harbour-street", ".mp3", "Ferry Songs, Side B", "Music, MP3"},
       {"harbour-street", ".mp4", "Live in the Cellar", "Concert, MP4"}}}},
    {"Kite Season Pictures",
     "Student films, one a week.",
     {{{"kite-season", ".mp4", "Kite Season", "Student film, MP4"},
       {"kite-season", ".m4v", "Three Wet Dogs", "Student film, M4V"},
       {"kite-season", ".mp4", "Where the Bus Turns", "Student film, MP4"}}}},
    {"Quarter to Rain",
     "Field recordings and weather films.",
     {{{"quarter-to-rain", ".mp3", "Rain on a Tin Roof", "Recording, MP3"},
       {"quarter-to-rain", ".mp4", "Clouds over the Weir", "Weather film, MP4"},
       {"quarter-to-rain", ".mp3", "Foghorn at Five", "Recording, MP3"}}}},
}};
}
