#pragma once
#include "platform/uikit/UIView.h"

namespace vistrel {
class UIImage;

/// Shows a picture, stretched over its bounds. Draws nothing itself: composition uses the
/// picture's pixels.
class UIImageView : public UIView {
public:
    explicit UIImageView(CGRect frame = {});
    /// As large as the picture.
    static std::shared_ptr<UIImageView> withImage(std::shared_ptr<const UIImage> image);

    const std::shared_ptr<const UIImage>& image() const { return image_; }
    void setImage(std::shared_ptr<const UIImage> image);
    CGSize sizeThatFits(CGSize size) const override;
    /// The picture's own pixels, unless it stretches by caps.
    std::shared_ptr<const Bitmap> contentPicture() override;
    bool drawsContent() const override;
    void drawRect(const CGRect& rect) override;

private:
    std::shared_ptr<const UIImage> image_;
};

}
