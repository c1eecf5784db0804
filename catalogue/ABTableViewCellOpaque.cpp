#include "catalogue/ABTableViewCellOpaque.h"

#include "catalogue/ABTableViewCellOpaqueView.h"

#include <utility>

namespace vistrel {

ABTableViewCellOpaque::ABTableViewCellOpaque(UITableViewCellStyle style,
                                             std::string reuseIdentifier)
    : UITableViewCell(style, std::move(reuseIdentifier)) {
    auto contentView = std::make_shared<ABTableViewCellOpaqueView>();
    contentView->setOpaque(true);
    contentView_ = contentView.get();
    addSubview(std::move(contentView));
}

ABTableViewCellOpaque::~ABTableViewCellOpaque() = default;

void ABTableViewCellOpaque::setFrame(const CGRect& frame) {
    const CGSize before = bounds().size;
    UITableViewCell::setFrame(frame);
    if (bounds().size != before)
        contentView_->setFrame(bounds());
}

void ABTableViewCellOpaque::setNeedsDisplay() {
    UITableViewCell::setNeedsDisplay();
    contentView_->setNeedsDisplay();
}

void ABTableViewCellOpaque::drawContentView(const CGRect& /*rect*/) {}

}
