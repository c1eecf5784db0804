#include "platform/graphics/Bitmap.h"

#include "platform/graphics/PixelPool.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vistrel {

namespace {
constexpr int kLongestSide = 8192;
}

int Bitmap::pixelsFor(double points, double scale) {
    return std::clamp(static_cast<int>(std::ceil(points * scale - 1e-6)), 1, kLongestSide);
}

Bitmap::Bitmap(int width, int height)
    : width_(std::max(width, 1))
    , height_(std::max(height, 1))
    , stride_(width_ * 4)
    , pixels_(PixelPool::shared().take(static_cast<std::size_t>(width_) *
                                       static_cast<std::size_t>(height_))) {}

Bitmap::~Bitmap() {
    PixelPool::shared().giveBack(pixels_, static_cast<std::size_t>(width_) *
                                              static_cast<std::size_t>(height_));
}

void Bitmap::clear() {
    std::memset(pixels_, 0, static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_));
}

void Bitmap::findOpacity() {
    opaque_ = true;
    for (int y = 0; y < height_ && opaque_; ++y) {
        // Without an early exit inside a row the compiler vectorizes the loop.
        std::uint32_t common = 0xFFFFFFFF;
        for (int x = 0; x < width_; ++x)
            common &= row(y)[x];
        opaque_ = common >> 24 == 0xFF;
    }
}

}
