#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vistrel {
class Bitmap;
class UIButton;
class UIImage;

/// Grey levels of a mask: 255 is opaque, 0 transparent.
struct OvoGreyMask {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> levels; ///< row by row from the top
    std::uint8_t level(int x, int y) const {
        return levels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

/// White in the top row, black in the bottom row, linear between them. Sizes in pixels, at least 1.
OvoGreyMask CreateGradientImage(int pixelsWide, int pixelsHigh);

/// A transparent bitmap to draw into, 32 bits per pixel, alpha first and premultiplied. Sizes at
/// least 1.
std::shared_ptr<Bitmap> MyCreateBitmapContext(int pixelsWide, int pixelsHigh);

/// The mirror image of the button's picture, scaled to the button's bounds. Starts with the bottom
/// row, is `height` points high and fades to nothing. As wide as the button, at the screen's scale.
/// Null when the height is 0.
std::shared_ptr<const UIImage> reflectedImageWithHeight(const UIButton& fromImage, unsigned height);

}
