#include "platform/graphics/Bitmap.h"

#include "platform/graphics/PixelPool.h"

#include <algorithm>
#include <cstring>

namespace vistrel {

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
    const auto count = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    opaque_ = std::all_of(pixels_, pixels_ + count,
                          [](std::uint32_t pixel) { return (pixel >> 24) == 0xFF; });
}

}
