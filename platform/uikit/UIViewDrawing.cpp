#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIImage.h"
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

std::shared_ptr<const Bitmap> UIView::drawnPicture() {
    const double scale = UIImage::screenScale();
    const CGRect area = bounds();
    const int width = Bitmap::pixelsFor(area.size.width, scale);
    const int height = Bitmap::pixelsFor(area.size.height, scale);
    const bool fits =
        drawn_ && drawnScale_ == scale && drawn_->width() == width && drawn_->height() == height;
    if (fits && !needsDisplay_)
        return drawn_;
    needsDisplay_ = false;
    drawnScale_ = scale;
    // Painted over in place: outputs learn of it by the generation.
    if (fits)
        drawn_->clear();
    else
        drawn_ = std::make_shared<Bitmap>(width, height);
    {
        CGContext context(drawn_, scale);
        context.translate(-area.minX(), -area.minY());
        UIGraphicsPushContext(context);
        drawRect(area);
        UIGraphicsPopContext();
    }
    if (opaque_)
        drawn_->findOpacity();
    else
        drawn_->setOpaque(false);
    return drawn_;
}

void UIView::insertGradientLayerAtIndex(std::shared_ptr<CAGradientLayer> layer, std::size_t index) {
    std::erase(gradientLayers_, layer);
    index = std::min(index, gradientLayers_.size());
    gradientLayers_.insert(gradientLayers_.begin() + static_cast<std::ptrdiff_t>(index),
                           std::move(layer));
    setNeedsComposition();
}

void UIView::removeGradientLayer(const CAGradientLayer& layer) {
    if (std::erase_if(gradientLayers_, [&](const auto& other) { return other.get() == &layer; }))
        setNeedsComposition();
}

bool UIView::isOnScreen() const {
    for (const auto* view = this; view != nullptr; view = view->superview_) {
        if (view->hidden_)
            return false;
        if (view->isScreen())
            return true;
    }
    return false;
}

void UIView::setNeedsComposition() {
    // What layout changes while a frame is being made is part of that frame.
    if (!SceneWalk::isLayingOut() && isOnScreen())
        host::current().display->requestFrame();
}

}
