#pragma once
#include "catalogue/CatalogueRow.h"

#include <span>
#include <string>
#include <vector>

namespace vistrel {

/// One row of a catalogue's list: its title, and the full address of its page.
struct CatalogueRecord {
    std::string title;
    std::string URL;
};

/// The rows in their order, with addresses on the content site.
std::vector<CatalogueRecord> catalogueRecords(std::span<const CatalogueRow> rows);

}
