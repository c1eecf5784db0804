#include "tests/support/ui/Pixels.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIView.h"

namespace vistrel {

std::shared_ptr<const UIImage> plainImage(int width, int height, std::uint32_t pixel) {
    auto bitmap = std::make_shared<Bitmap>(width, height);
    for (int y = 0; y < height; ++y)
        std::fill_n(bitmap->row(y), width, pixel);
    return std::make_shared<UIImage>(bitmap, 1);
}

std::uint32_t pixelOf(UIView& view, int x, int y) {
    return renderViewToBitmap(view, 1)->pixel(x, y);
}

bool anyPixel(UIView& view, const CGRect& part, const std::function<bool(std::uint32_t)>& matches) {
    const auto picture = renderViewToBitmap(view, 1);
    for (int y = static_cast<int>(part.minY()); y < part.maxY(); ++y) {
        for (int x = static_cast<int>(part.minX()); x < part.maxX(); ++x) {
            if (matches(picture->pixel(x, y)))
                return true;
        }
    }
    return false;
}

}
