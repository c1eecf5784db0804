#include "platform/uikit/UISelfPaintingCell.h"

#include <utility>

namespace vistrel {

void UISelfPaintingCellView::drawRect(const CGRect& rect) {
    if (auto* cell = dynamic_cast<UISelfPaintingCell*>(superview()))
        cell->drawContentView(rect);
}

UISelfPaintingCell::UISelfPaintingCell(UITableViewCellStyle style, std::string reuseIdentifier,
                                       Opaque opaque)
    : UITableViewCell(style, std::move(reuseIdentifier)) {
    auto contentView = std::make_shared<UISelfPaintingCellView>();
    contentView->setOpaque(opaque == Opaque::Yes);
    contentView_ = contentView.get();
    addSubview(std::move(contentView));
}

void UISelfPaintingCell::setFrame(const CGRect& frame) {
    const CGSize before = bounds().size;
    UITableViewCell::setFrame(frame);
    if (bounds().size != before)
        contentView_->setFrame(bounds());
}

void UISelfPaintingCell::setNeedsDisplay() {
    UITableViewCell::setNeedsDisplay();
    contentView_->setNeedsDisplay();
}

void UISelfPaintingCell::drawContentView(const CGRect& /*rect*/) {}

}
