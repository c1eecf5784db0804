#pragma once
#include "platform/uikit/UISelfPaintingCell.h"

#include <string>
#include <utility>

namespace vistrel {

/// A row that hides what is behind the table.
class ABTableViewCellOpaque : public UISelfPaintingCell {
public:
    ABTableViewCellOpaque(UITableViewCellStyle style, std::string reuseIdentifier)
        : UISelfPaintingCell(style, std::move(reuseIdentifier), Opaque::Yes) {}
};

using ABTableViewCellOpaqueView = UISelfPaintingCellView;

}
