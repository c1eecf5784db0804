#pragma once
#include <memory>
#include <string_view>

namespace vistrel {
class UIImage;

/// The library's built-in pictures, for which it needs no resources of its host. Decoded on first
/// use, then kept for the life of the process.
class GADIntrinsicImages {
public:
    /// 25 x 25 points.
    static std::shared_ptr<const UIImage> closeButton();
    /// 27 x 27 points.
    static std::shared_ptr<const UIImage> browserBackButton();
    static std::shared_ptr<const UIImage> browserForwardButton();

    /// Decodes a PNG file in standard base64, two pixels per point. Null when the text is not one.
    static std::shared_ptr<const UIImage> createImageFromEncoding(std::string_view encoding);
};

}
