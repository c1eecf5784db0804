#include "audio/OvoTableViewCell.h"

#include "audio/OvoTableViewCellView.h"

#include <utility>

namespace vistrel {

OvoTableViewCell::OvoTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier)
    : UITableViewCell(style, std::move(reuseIdentifier)) {
    auto contentView = std::make_shared<OvoTableViewCellView>();
    contentView->setOpaque(false);
    contentView_ = contentView.get();
    addSubview(std::move(contentView));
}

OvoTableViewCell::~OvoTableViewCell() = default;

void OvoTableViewCell::setFrame(const CGRect& frame) {
    const CGSize before = bounds().size;
    UITableViewCell::setFrame(frame);
    if (bounds().size != before)
        contentView_->setFrame(bounds());
}

void OvoTableViewCell::setNeedsDisplay() {
    UITableViewCell::setNeedsDisplay();
    contentView_->setNeedsDisplay();
}

void OvoTableViewCell::drawContentView(const CGRect& /*rect*/) {}

}
