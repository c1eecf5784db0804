#include "catalogue/CatalogueRecord.h"

#include "settings/Settings.h"

namespace vistrel {

std::vector<CatalogueRecord> catalogueRecords(std::span<const CatalogueRow> rows) {
    std::vector<CatalogueRecord> records;
    records.reserve(rows.size());
    for (const CatalogueRow& row : rows)
        records.push_back({std::string(row.title), contentSiteAddress(std::string(row.path))});
    return records;
}

}
