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

std::string colors(UIView& view, const std::string& points) {
    static const std::map<std::uint32_t, std::string> kNames{
        {0, "clear"},         {0xFFFF0000, "red"},   {0xFF00FF00, "green"},
        {0xFF0000FF, "blue"}, {0xFFFFFFFF, "white"}, {0xFF000000, "black"}};
    const auto picture = renderViewToBitmap(view, 1);
    std::istringstream words(points);
    std::string names;
    char comma = 0;
    for (int x = 0, y = 0; words >> x >> comma >> y;) {
        const auto named = kNames.find(picture->pixel(x, y));
        names += names.empty() ? "" : " ";
        names += named == kNames.end() ? "mixed" : named->second;
    }
    return names;
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
