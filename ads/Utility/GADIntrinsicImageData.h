#pragma once
#include <string_view>

namespace vistrel {

/// The pictures that the ad library carries in itself: PNG files as base64 text, to be shown at
/// scale 2. The texts are written by resources/encode-intrinsic-images from the drawings beside it.

/// 50 by 50 pixels.
extern const std::string_view kGADCloseButtonImageData;
/// 54 by 54 pixels.
extern const std::string_view kGADBrowserBackButtonImageData;
extern const std::string_view kGADBrowserForwardButtonImageData;

} // namespace vistrel
