#pragma once
#include "platform/graphics/CGGeometry.h"
#include "tests/support/Testing.h"

namespace vistrel {
class UIImage;
class UIView;

/// One colour all over.
std::shared_ptr<const UIImage> plainImage(int width, int height, std::uint32_t pixel);
/// The pixel under a point of the view, drawn at one pixel a point.
std::uint32_t pixelOf(UIView& view, int x, int y);
/// Whether the part of the view has a pixel that `matches`.
bool anyPixel(UIView& view, const CGRect& part, const std::function<bool(std::uint32_t)>& matches);

}
