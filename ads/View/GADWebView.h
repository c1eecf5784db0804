#pragma once
#include "platform/uikit/UIWebView.h"

#include <memory>
#include <optional>

namespace vistrel {
class GADWebViewPrivate;

/// A web page of the library: clips, scales its pages, resizes with its parent, and is transparent
/// where the page paints nothing. Records whether the user has touched it.
class GADWebView : public UIWebView {
public:
    static std::shared_ptr<GADWebView> withFrame(CGRect frame);
    ~GADWebView() override;

    /// Set by every touch that begins in the page.
    bool touched() const;
    void forgetTouch();
    /// Seconds since the last touch; nothing when the page has not been touched.
    std::optional<double> secondsSinceTouch() const;
    /// Detaches the delegate and empties the page.
    void empty();

    bool touchWillBeginInside(const UITouch& touch) override;

private:
    explicit GADWebView(CGRect frame);
    std::shared_ptr<GADWebViewPrivate> vars() const;
};

}
