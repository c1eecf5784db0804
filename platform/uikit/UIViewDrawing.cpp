#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/SceneWalk.h"
#include "platform/uikit/UIView.h"

#include <algorithm>

namespace vistrel {

void UIView::setNeedsDisplay() {
    needsDisplay_ = true;
    setNeedsComposition();
}

void UIView::drawRect(const CGRect& /*rect*/) {}

void UIView::insertGradientLayerAtIndex(std::shared_ptr<CAGradientLayer> layer, std::size_t index) {
    std::erase(gradientLayers_, layer);
    index = std::min(index, gradientLayers_.size());
    gradientLayers_.insert(gradientLayers_.begin() + static_cast<std::ptrdiff_t>(index),
                           std::move(layer));
    setNeedsComposition();
}

void UIView::removeGradientLayer(const CAGradientLayer& layer) {
    if (std::erase_if(gradientLayers_, [&](const auto& other) { return other.get() == &layer; })) {
        setNeedsComposition();
    }
}

bool UIView::isOnScreen() const {
    for (const auto* view = this; view != nullptr; view = view->superview_) {
        if (view->hidden_) {
            return false;
        }
        if (view->isScreen_) {
            return true;
        }
    }
    return false;
}

void UIView::setNeedsComposition() {
    // What layout changes while a frame is being made is part of that frame.
    if (!SceneWalk::isLayingOut() && isOnScreen()) {
        host::current().display->requestFrame();
    }
}

}
