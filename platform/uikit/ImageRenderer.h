#pragma once
#include <memory>

namespace vistrel {
class Bitmap;
class UIView;

/// Composes a view tree into a picture of `scale` pixels per point: screenshots, tests, cached
/// transitions. Foreign content shows only its background.
std::shared_ptr<Bitmap> renderViewToBitmap(UIView& view, double scale);

}
