#pragma once
#include <memory>
#include <string_view>

namespace vistrel {
class UIImage;

/// The pictures that the library carries in itself: it depends on no resource of its host. Decoded
/// at the first use, then kept for the life of the process.
class GADIntrinsicImages {
public:
    /// 25 x 25 points.
    static std::shared_ptr<const UIImage> closeButton();
    /// 27 x 27 points.
    static std::shared_ptr<const UIImage> browserBackButton();
    static std::shared_ptr<const UIImage> browserForwardButton();

    /// A PNG file as standard base64, two pixels a point. Null when it is none.
    static std::shared_ptr<const UIImage> createImageFromEncoding(std::string_view encoding);
};

}
