#pragma once
#include <memory>

namespace vistrel {
class Bitmap;
class UIView;

/// Composes a view tree into a picture of `scale` pixels a point: screenshots, tests, cached
/// transitions. Foreign content is left as its background.
std::shared_ptr<Bitmap> renderViewToBitmap(UIView& view, double scale);

}
