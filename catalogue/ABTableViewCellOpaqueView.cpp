#include "catalogue/ABTableViewCellOpaqueView.h"

#include "catalogue/ABTableViewCellOpaque.h"

namespace vistrel {

void ABTableViewCellOpaqueView::drawRect(const CGRect& rect) {
    if (auto* cell = dynamic_cast<ABTableViewCellOpaque*>(superview()))
        cell->drawContentView(rect);
}

}
