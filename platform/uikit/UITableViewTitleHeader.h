#pragma once
#include "platform/uikit/UIView.h"

#include <memory>
#include <string>

namespace vistrel {
class CAGradientLayer;
class UILabel;

/// A section's title on a dark translucent bar.
class UITableViewTitleHeader : public UIView {
public:
    explicit UITableViewTitleHeader(std::string title);
    void layoutSubviews() override;

private:
    std::shared_ptr<CAGradientLayer> shade_;
    std::shared_ptr<UIView> topLine_;
    std::shared_ptr<UIView> bottomLine_;
    std::shared_ptr<UILabel> label_;
};

}
