#pragma once
#include <string_view>

namespace vistrel {

/// One line of a catalogue: what the list shows and where on the content site it leads. The path
/// begins with a slash.
struct CatalogueRow {
    std::string_view title;
    std::string_view path;
};

} // namespace vistrel
