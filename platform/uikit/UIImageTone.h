#pragma once
#include <memory>

namespace vistrel {
class UIImage;

/// The picture darkened, for pressed buttons; transparent parts stay transparent.
std::shared_ptr<const UIImage> darkenedImage(const UIImage& image);
/// The picture with its opacity multiplied, for disabled buttons.
std::shared_ptr<const UIImage> fadedImage(const UIImage& image, double opacity);

}
