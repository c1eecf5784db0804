#pragma once
#include "ads/ViewController/GADViewController.h"
#include "platform/foundation/NSURL.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class GADObjectPrivate;
class GADWebAppViewControllerPrivate;

/// A full-screen ad: a borderless page under a close button that belongs to the screen and works
/// whatever the page does.
class GADWebAppViewController : public GADViewController {
public:
    GADWebAppViewController();
    ~GADWebAppViewController() override;

    /// Loads now, or when the screen first appears.
    void load(const NSURL& url);
    void loadHTMLBaseURL(std::string html, std::optional<NSURL> baseURL);
    /// The ad whose click addresses are pinged; not retained.
    std::shared_ptr<GADObjectPrivate> adController() const;
    void setAdController(std::weak_ptr<GADObjectPrivate> controller);
    /// Null before the screen first appears.
    std::shared_ptr<GADWebView> webView() const;

    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;

protected:
    std::shared_ptr<GADWebView> rotatingWebView() const override { return webView(); }

private:
    std::shared_ptr<GADWebAppViewControllerPrivate> vars() const;
    void buildWebView();
    void loadPending();
    void addCloseButton();
    void addLoadingSpinner();
};

}
