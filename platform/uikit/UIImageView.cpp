#include "platform/uikit/UIImageView.h"

#include "platform/graphics/UIImage.h"

namespace vistrel {

UIImageView::UIImageView(CGRect frame)
    : UIView(frame) {
    setUserInteractionEnabled(false);
    setOpaque(false);
}

std::shared_ptr<UIImageView> UIImageView::withImage(std::shared_ptr<const UIImage> image) {
    const CGSize size = image ? image->size() : CGSize{};
    auto view = std::make_shared<UIImageView>(CGRect{{}, size});
    view->setImage(std::move(image));
    return view;
}

void UIImageView::setImage(std::shared_ptr<const UIImage> image) {
    if (image_ == image)
        return;
    image_ = std::move(image);
    setNeedsDisplay();
}

CGSize UIImageView::sizeThatFits(CGSize) const {
    return image_ ? image_->size() : CGSize{};
}

std::shared_ptr<const Bitmap> UIImageView::contentPicture() {
    const bool stretches = image_ && (image_->leftCapWidth() > 0 || image_->topCapHeight() > 0);
    return image_ && !stretches ? image_->bitmap() : nullptr;
}

bool UIImageView::drawsContent() const {
    return image_ != nullptr;
}

void UIImageView::drawRect(const CGRect& rect) {
    if (image_)
        image_->drawInRect(rect);
}

}
