#include "catalogue/ABTableViewCellView.h"

#include "catalogue/ABTableViewCell.h"

namespace vistrel {

void ABTableViewCellView::drawRect(const CGRect& rect) {
    if (auto* cell = dynamic_cast<ABTableViewCell*>(superview()))
        cell->drawContentView(rect);
}

}
