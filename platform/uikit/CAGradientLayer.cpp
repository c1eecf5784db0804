#include "platform/uikit/CAGradientLayer.h"

#include "platform/graphics/Bitmap.h"

namespace vistrel {

std::shared_ptr<const Bitmap> CAGradientLayer::contents(double scale) {
    if (frame.isEmpty() || gradient.colors.empty())
        return nullptr;
    const int width = Bitmap::pixelsFor(frame.size.width, scale);
    const int height = Bitmap::pixelsFor(frame.size.height, scale);
    if (painted_ && painted_->width() == width && painted_->height() == height &&
        paintedGradient_ == gradient)
        return painted_;
    auto bitmap = std::make_shared<Bitmap>(width, height);
    CGContext(bitmap, 1).drawLinearGradient(gradient, {}, {0, static_cast<double>(height)});
    bitmap->findOpacity();
    paintedGradient_ = gradient;
    return painted_ = std::move(bitmap);
}

}
