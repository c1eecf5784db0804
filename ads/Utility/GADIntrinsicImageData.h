#pragma once
#include <string_view>

namespace vistrel {

/// The ad library's built-in pictures: PNG files as base64 text, shown at scale 2.
/// resources/encode-intrinsic-images makes the texts from the drawings beside it.

/// 50 by 50 pixels.
extern const std::string_view kGADCloseButtonImageData;
/// 54 by 54 pixels.
extern const std::string_view kGADBrowserBackButtonImageData;
extern const std::string_view kGADBrowserForwardButtonImageData;

} // namespace vistrel
