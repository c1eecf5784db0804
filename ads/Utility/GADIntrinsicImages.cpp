#include "ads/Utility/GADIntrinsicImages.h"

#include "ads/Utility/GADIntrinsicImageData.h"
#include "ads/encoding/GAD_StringEncoding.h"
#include "platform/graphics/UIImage.h"

namespace vistrel {

namespace {
constexpr double kScale = 2;
}

std::shared_ptr<const UIImage> GADIntrinsicImages::closeButton() {
    static const auto image = createImageFromEncoding(kGADCloseButtonImageData);
    return image;
}

std::shared_ptr<const UIImage> GADIntrinsicImages::browserBackButton() {
    static const auto image = createImageFromEncoding(kGADBrowserBackButtonImageData);
    return image;
}

std::shared_ptr<const UIImage> GADIntrinsicImages::browserForwardButton() {
    static const auto image = createImageFromEncoding(kGADBrowserForwardButtonImageData);
    return image;
}

std::shared_ptr<const UIImage>
GADIntrinsicImages::createImageFromEncoding(std::string_view encoding) {
    const auto bytes = GAD_StringEncoding::rfc4648Base64StringEncoding()->decode(encoding);
    if (!bytes)
        return nullptr;
    const auto picture = UIImage::imageWithData(*bytes);
    return picture ? std::make_shared<UIImage>(picture->bitmap(), kScale) : nullptr;
}

}
