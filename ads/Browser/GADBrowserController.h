#pragma once
#include "ads/ViewController/GADViewController.h"
#include "platform/foundation/NSURL.h"

#include <memory>
#include <optional>

namespace vistrel {
class GADBrowserControllerPrivate;
class UIBarButtonItem;
class UIToolbar;

/// The in-ad browser: a web page over a toolbar with back, forward, reload (a spinner while the
/// page loads), "View in Safari" and Done.
class GADBrowserController : public GADViewController {
public:
    GADBrowserController();
    ~GADBrowserController() override;

    /// Loads now, or when the screen first appears. Does nothing without an address.
    void load(const std::optional<NSURL>& url);
    /// Likewise, and sends the referring address as "Referer".
    void loadReferringURL(const std::optional<NSURL>& url,
                          const std::optional<NSURL>& referringURL);
    /// Do nothing at the end of the history.
    void back();
    void forward();
    void reload();
    void stop();
    /// Opens the current page in the system's browser.
    void openInSafari();
    /// Updates the items from the page's state.
    void refreshToolbar();
    /// Null before the screen first appears.
    std::shared_ptr<GADWebView> webView() const;
    std::shared_ptr<UIToolbar> toolbar() const;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;

protected:
    std::shared_ptr<GADWebView> rotatingWebView() const override { return webView(); }

private:
    std::shared_ptr<GADBrowserControllerPrivate> vars() const;
    void buildWebView(double toolbarHeight);
    void buildToolbar(double toolbarHeight);
    void makeItems();
    void closeUnlessLoaded();
};

}
