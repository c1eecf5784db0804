#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vistrel {
class Bitmap;
class UIButton;
class UIImage;

/// Grey levels that say how much of a drawing is let through: 255 all, 0 nothing.
struct OvoGreyMask {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> levels; ///< row by row from the top
    std::uint8_t level(int x, int y) const {
        return levels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

/// White in the top row, black in the bottom row, even steps between. Sizes in pixels, at least 1.
OvoGreyMask CreateGradientImage(int pixelsWide, int pixelsHigh);

/// Transparent pixels to draw into: 32 bits each, alpha first and premultiplied. Sizes at least 1.
std::shared_ptr<Bitmap> MyCreateBitmapContext(int pixelsWide, int pixelsHigh);

/// The mirror image of what the button shows stretched over its bounds: begins with the bottom row,
/// climbs for `height` points, and fades from whole to nothing on the way. As wide as the button,
/// at the screen's scale. Null when the height is 0.
std::shared_ptr<const UIImage> reflectedImageWithHeight(const UIButton& fromImage, unsigned height);

}
