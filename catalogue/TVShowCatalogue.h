#pragma once
#include "catalogue/CatalogueRow.h"
#include <span>

namespace vistrel {

/// The TV shows of the content site in the order in which they are listed, which is mostly
/// alphabetical. Most lead to a separate page, eight to a forum page, and a few share a page.
/// The rows live as long as the process.
std::span<const CatalogueRow> tvShowCatalogue();

} // namespace vistrel
