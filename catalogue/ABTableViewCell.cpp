#include "catalogue/ABTableViewCell.h"

#include "catalogue/ABTableViewCellView.h"

#include <utility>

namespace vistrel {

ABTableViewCell::ABTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier)
    : UITableViewCell(style, std::move(reuseIdentifier)) {
    auto contentView = std::make_shared<ABTableViewCellView>();
    contentView->setOpaque(false);
    contentView_ = contentView.get();
    addSubview(std::move(contentView));
}

ABTableViewCell::~ABTableViewCell() = default;

void ABTableViewCell::setFrame(const CGRect& frame) {
    const CGSize before = bounds().size;
    UITableViewCell::setFrame(frame);
    if (bounds().size != before)
        contentView_->setFrame(bounds());
}

void ABTableViewCell::setNeedsDisplay() {
    UITableViewCell::setNeedsDisplay();
    contentView_->setNeedsDisplay();
}

void ABTableViewCell::drawContentView(const CGRect& /*rect*/) {}

}
