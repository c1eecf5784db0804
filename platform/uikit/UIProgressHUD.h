#pragma once
#include "platform/uikit/UIView.h"

#include <string>

namespace vistrel {
class UIActivityIndicatorView;
class UILabel;

/// A dark panel with a spinner and one line of text over a view.
class UIProgressHUD : public UIView {
public:
    /// initWithWindow:: covers `view` when shown.
    static std::shared_ptr<UIProgressHUD> withWindow(UIView& view);

    void setText(std::string text);
    /// True adds it to the view and fades in; false fades out and removes it.
    void show(bool shown);
    void layoutSubviews() override;

private:
    explicit UIProgressHUD(CGRect frame);

    std::weak_ptr<UIView> host_;
    std::shared_ptr<UIView> panel_;
    std::shared_ptr<UIActivityIndicatorView> spinner_;
    std::shared_ptr<UILabel> label_;
    bool shown_ = false;
};

}
