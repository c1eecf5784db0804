#include "audio/OvoAudioPlayerReflection.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIButton.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

/// Multiplies all four channels by level / 255, rounded, two channels at a time.
std::uint32_t shaded(std::uint32_t pixel, std::uint32_t level) {
    constexpr std::uint32_t kLow = 0x00FF00FF;
    constexpr std::uint32_t kHalf = 0x00800080;
    std::uint32_t redBlue = (pixel & kLow) * level + kHalf;
    std::uint32_t alphaGreen = (pixel >> 8 & kLow) * level + kHalf;
    redBlue = (redBlue + (redBlue >> 8 & kLow)) >> 8 & kLow;
    alphaGreen = (alphaGreen + (alphaGreen >> 8 & kLow)) & ~kLow;
    return redBlue | alphaGreen;
}

/// The picture scaled to this many pixels; its own bitmap when it has that size.
std::shared_ptr<const Bitmap> pixelsOf(const UIImage& image, int width, int height) {
    const auto& own = image.bitmap();
    if (own->width() == width && own->height() == height)
        return own;
    auto stretched = MyCreateBitmapContext(width, height);
    CGContext context(stretched, 1);
    context.drawBitmap(*own, CGRectMake(0, 0, width, height));
    return stretched;
}

/// The cover's rows from the last one upwards, each dimmer than the one before.
void reflect(const Bitmap& cover, const OvoGreyMask& mask, Bitmap& reflection) {
    const int rows = std::min(reflection.height(), cover.height());
    for (int y = 0; y < rows; ++y) {
        const std::uint32_t level = mask.level(0, y);
        const std::uint32_t* from = cover.row(cover.height() - 1 - y);
        std::uint32_t* to = reflection.row(y);
        for (int x = 0; x < reflection.width(); ++x)
            to[x] = shaded(from[x], level);
    }
}

int pixels(double points, double scale) {
    return std::max(1, static_cast<int>(std::lround(points * scale)));
}

}

OvoGreyMask CreateGradientImage(int pixelsWide, int pixelsHigh) {
    OvoGreyMask mask{pixelsWide, pixelsHigh, {}};
    mask.levels.reserve(static_cast<std::size_t>(pixelsWide) *
                        static_cast<std::size_t>(pixelsHigh));
    const int last = std::max(pixelsHigh - 1, 1);
    for (int y = 0; y < pixelsHigh; ++y) {
        const int level = (255 * (last - y) + last / 2) / last;
        mask.levels.insert(mask.levels.end(), static_cast<std::size_t>(pixelsWide),
                           static_cast<std::uint8_t>(level));
    }
    return mask;
}

std::shared_ptr<Bitmap> MyCreateBitmapContext(int pixelsWide, int pixelsHigh) {
    return std::make_shared<Bitmap>(pixelsWide, pixelsHigh);
}

std::shared_ptr<const UIImage> reflectedImageWithHeight(const UIButton& fromImage,
                                                        unsigned height) {
    if (height == 0)
        return nullptr;
    const double scale = UIImage::screenScale();
    const CGSize size = fromImage.bounds().size;
    const int width = pixels(std::trunc(size.width), scale);
    auto reflection = MyCreateBitmapContext(width, pixels(height, scale));
    if (const auto image = fromImage.currentImage())
        reflect(*pixelsOf(*image, width, pixels(size.height, scale)),
                CreateGradientImage(1, reflection->height()), *reflection);
    return std::make_shared<UIImage>(std::move(reflection), scale);
}

}
