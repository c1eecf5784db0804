#include "platform/linux/window/ForeignPlacement.h"

#include "platform/host/ForeignContent.h"
#include "platform/linux/window/GtkForeignContent.h"

namespace vistrel {

void ForeignPlacement::pushTransform(const CGAffineTransform& transform) {
    transforms_.push_back(transform.concat(transforms_.back()));
}

void ForeignPlacement::pushClip(const CGRect&) {
    transforms_.push_back(transforms_.back());
}

void ForeignPlacement::pushOpacity(double) {
    transforms_.push_back(transforms_.back());
}

void ForeignPlacement::pop() {
    transforms_.pop_back();
}

void ForeignPlacement::drawForeign(const CGRect& rect, host::ForeignContent& content) {
    auto* foreign = dynamic_cast<GtkForeignContent*>(&content);
    if (GtkWidget* widget = foreign ? foreign->widget() : nullptr)
        places_.push_back({foreign, widget, rect, transforms_.back()});
}

}
