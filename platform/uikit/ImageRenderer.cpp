#include "platform/uikit/ImageRenderer.h"

#include "platform/graphics/Bitmap.h"
#include "platform/uikit/BitmapVisitor.h"
#include "platform/uikit/SceneWalk.h"
#include "platform/uikit/UIView.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

std::shared_ptr<Bitmap> renderViewToBitmap(UIView& view, double scale) {
    const auto bounds = view.bounds();
    const auto pixels = [&](double points) {
        return std::max(1, static_cast<int>(std::ceil(points * scale - 1e-6)));
    };
    auto bitmap = std::make_shared<Bitmap>(pixels(bounds.size.width), pixels(bounds.size.height));
    {
        BitmapVisitor visitor(bitmap, scale);
        visitor.pushTransform(CGAffineTransformMakeTranslation(-bounds.minX(), -bounds.minY()));
        SceneWalk::walkContents(view, visitor);
        visitor.pop();
    }
    bitmap->findOpacity();
    return bitmap;
}

}
