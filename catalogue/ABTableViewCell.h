#pragma once
#include "platform/uikit/UISelfPaintingCell.h"

#include <string>
#include <utility>

namespace vistrel {

/// A catalogue's row over whatever is behind the table.
class ABTableViewCell : public UISelfPaintingCell {
public:
    ABTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier)
        : UISelfPaintingCell(style, std::move(reuseIdentifier), Opaque::No) {}
};

using ABTableViewCellView = UISelfPaintingCellView;

}
