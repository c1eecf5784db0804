#include "audio/OvoTableViewCellView.h"

#include "audio/OvoTableViewCell.h"

namespace vistrel {

void OvoTableViewCellView::drawRect(const CGRect& rect) {
    if (auto* cell = dynamic_cast<OvoTableViewCell*>(superview()))
        cell->drawContentView(rect);
}

}
