#pragma once
#include <array>
#include <string_view>

namespace vistrel::demo {

/// Invented films for the movie pages: one line per initial, "#" first.
struct FilmsOfInitial {
    char initial;
    std::array<std::string_view, 3> titles;
};

inline constexpr std::array<FilmsOfInitial, 27> films = {{
    {'#', {"3 Bridges", "12 Winters", "40 Steps Down"}},
    {'a', {"Amber Ferry", "Attic Orchestra", "All the Lamps"}},
    {'b', {"Borrowed Bicycle", "Blue Allotment", "Before the Tide"}},
    {'c', {"Cardboard Navy", "Chalk Harbour", "Cold Kettle"}},
    {'d', {"Dust on the Dial", "Dear Lighthouse", "Double Sunday"}},
    {'e', {"Eleven Umbrellas", "East of the Mill", "Empty Carousel"}},
    {'f', {"Forgotten Platform", "Fog Letters", "Four Left Shoes"}},
    {'g', {"Gravel Kings", "Glass Orchard", "Good Night, Tram"}},
    {'h', {"Harbour Master", "House of Reels", "Half a Lantern"}},
    {'i', {"Iron Picnic", "Inland Sailor", "Ink and Ivy"}},
    {'j', {"January Parade", "Juniper Road", "Just One Rowboat"}},
    {'k', {"Kite Season", "Keys to the Pier", "Kiln"}},
    {'l', {"Long Way Round", "Last Tin Whistle", "Letters to a Lift"}},
    {'m', {"Moth and Lamp", "Marmalade Mutiny", "Mile Marker Nine"}},
    {'n', {"Night Ferry Home", "Nine Clockmakers", "North of Noon"}},
    {'o', {"Old Copper Wire", "One More Harvest", "Orchard Radio"}},
    {'p', {"Paper Boats", "Pocket Thunder", "Pigeon Post"}},
    {'q', {"Quiet Turnstile", "Quarry Songs", "Quarter to Rain"}},
    {'r', {"Rain Machine", "Room with a Pump", "Rust and Roses"}},
    {'s', {"Salt Calendar", "Second-Hand Moon", "Slow Train Sisters"}},
    {'t', {"Tin Roof Opera", "Three Wet Dogs", "The Map Room"}},
    {'u', {"Under the Weir", "Uncle Barometer", "Upstairs Sea"}},
    {'v', {"Valley of Switches", "Velvet Shovel", "Very Small Giants"}},
    {'w', {"Winter Bandstand", "Wax Cylinder", "Where the Bus Turns"}},
    {'x', {"X on the Chart", "Xylophone Summer", "Xenia's Garden"}},
    {'y', {"Yellow Oilskin", "Yard Sale Sonata", "Yesterday's Ferry"}},
    {'z', {"Zigzag Lane", "Zinc", "Zero Fathoms"}},
}};
}
