#pragma once
#include <memory>

namespace vistrel {
class UIImage;

/// The same picture, darker, as a pressed button shows it; transparent parts stay so.
std::shared_ptr<const UIImage> darkenedImage(const UIImage& image);
/// The same picture with its opacity multiplied, as a disabled button shows it.
std::shared_ptr<const UIImage> fadedImage(const UIImage& image, double opacity);

}
