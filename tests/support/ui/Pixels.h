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
/// The colours under points of the view by their names: "red clear" under "5,5 30,5". One that has
/// no name is "mixed".
std::string colors(UIView& view, const std::string& points);
/// Whether the part of the view has a pixel that `matches`.
bool anyPixel(UIView& view, const CGRect& part, const std::function<bool(std::uint32_t)>& matches);

}
