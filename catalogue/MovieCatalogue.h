#pragma once
#include "catalogue/CatalogueRow.h"
#include <span>

namespace vistrel {

/// The movie index pages of the content site in the order in which they are listed: two
/// collections, then one page for each initial character. The rows live as long as the process.
std::span<const CatalogueRow> movieCatalogue();

} // namespace vistrel
