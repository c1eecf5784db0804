#pragma once
#include "platform/uikit/UISelfPaintingCell.h"

#include <string>
#include <utility>

namespace vistrel {

/// A row of the music player over whatever is behind the table.
class OvoTableViewCell : public UISelfPaintingCell {
public:
    OvoTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier)
        : UISelfPaintingCell(style, std::move(reuseIdentifier), Opaque::No) {}
};

using OvoTableViewCellView = UISelfPaintingCellView;

}
