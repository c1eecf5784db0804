#pragma once
#include "platform/uikit/UIView.h"

#include <memory>
#include <string>

namespace vistrel {
class GADBannerViewDelegate;
class GADObjectPrivate;
class GADRequest;
class GADWebView;
class UIViewController;

/// An advertising banner. Set its ad unit, root view controller and optionally a delegate, add it
/// to a view and load it; after that it runs by itself. It may be destroyed at any time, also by
/// its delegate.
class GADBannerView : public UIView {
public:
    static std::shared_ptr<GADBannerView> withFrame(CGRect frame);
    ~GADBannerView() override;

    const std::string& adUnitID() const;
    void setAdUnitID(std::string adUnitID);
    /// Presents the screens of the ad; not retained. Must be set before a load.
    std::shared_ptr<UIViewController> rootViewController() const;
    void setRootViewController(std::weak_ptr<UIViewController> controller);
    /// Not retained.
    std::shared_ptr<GADBannerViewDelegate> delegate() const;
    void setDelegate(std::weak_ptr<GADBannerViewDelegate> delegate);
    std::shared_ptr<GADWebView> webView() const;
    /// Whether the refresh timer requested the current or last ad.
    bool hasAutoRefreshed() const;

    /// Null: a request without hints.
    void loadRequest(const std::shared_ptr<GADRequest>& request);

protected:
    explicit GADBannerView(CGRect frame);
    /// Connects the banner to its private half.
    void setPrivate(std::shared_ptr<GADObjectPrivate> object);

private:
    std::shared_ptr<GADObjectPrivate> privateObject() const;
};

}
