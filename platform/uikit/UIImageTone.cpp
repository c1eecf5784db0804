#include "platform/uikit/UIImageTone.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"

#include <cmath>
#include <cstdint>

namespace vistrel {

namespace {

constexpr double kDarkenedBrightness = 0.55;

/// Multiplies alpha and colour of every pixel; factors are 8.8 fixed point.
std::shared_ptr<const UIImage> multiplied(const UIImage& image, double colour, double alpha) {
    const Bitmap& source = *image.bitmap();
    auto result = std::make_shared<Bitmap>(source.width(), source.height());
    const auto colourFactor = static_cast<std::uint32_t>(std::lround(colour * 256));
    const auto alphaFactor = static_cast<std::uint32_t>(std::lround(alpha * 256));
    const auto scaled = [](std::uint32_t pixel, int shift, std::uint32_t factor) {
        return ((((pixel >> shift) & 0xFF) * factor) >> 8) << shift;
    };
    for (int y = 0; y < source.height(); ++y) {
        const std::uint32_t* from = source.row(y);
        std::uint32_t* to = result->row(y);
        for (int x = 0; x < source.width(); ++x) {
            to[x] = scaled(from[x], 24, alphaFactor) | scaled(from[x], 16, colourFactor) |
                    scaled(from[x], 8, colourFactor) | scaled(from[x], 0, colourFactor);
        }
    }
    result->setOpaque(source.isOpaque() && alpha >= 1);
    auto toned = std::make_shared<const UIImage>(result, image.scale());
    if (image.leftCapWidth() == 0 && image.topCapHeight() == 0)
        return toned;
    return toned->stretchableImage(image.leftCapWidth(), image.topCapHeight());
}

}

std::shared_ptr<const UIImage> darkenedImage(const UIImage& image) {
    return multiplied(image, kDarkenedBrightness, 1);
}

std::shared_ptr<const UIImage> fadedImage(const UIImage& image, double opacity) {
    return multiplied(image, opacity, opacity);
}

}
