#pragma once
#include "ads/Utility/GADSupportedOrientations.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"
#include "platform/uikit/MFMailComposeViewControllerDelegate.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vistrel {
class GADDelegateManager;
class GADObjectPrivate;
class GADViewController;
class GADWebView;
class UIViewController;

/// Opens the target of a click on an ad: a full-screen screen over the view controller, a mail, or
/// another application. Without a view controller, or while it is covered, nothing is opened inside
/// the application.
class GADOpener : public std::enable_shared_from_this<GADOpener>,
                  public MFMailComposeViewControllerDelegate {
public:
    void setDelegateManager(std::shared_ptr<GADDelegateManager> manager) {
        delegateManager_ = std::move(manager);
    }
    /// Presents the opened screens; not retained.
    void setViewController(std::weak_ptr<UIViewController> controller) {
        viewController_ = std::move(controller);
    }
    /// The page that contained the click.
    void setReferringURL(std::optional<NSURL> url) { referringURL_ = std::move(url); }
    /// The page of the clicked ad; not retained.
    void setOpeningWebView(std::weak_ptr<GADWebView> webView) {
        openingWebView_ = std::move(webView);
    }
    /// The ad whose click addresses are pinged; not retained.
    void setAdController(std::weak_ptr<GADObjectPrivate> controller) {
        adController_ = std::move(controller);
    }

    /// Opens the target in a bridge command's parameters; see GADOpenParameters.
    void openNotification(const Value::Dictionary& parameters);
    /// Has the system open the address, possibly in another application. Waits briefly for running
    /// pings.
    void openApp(const std::optional<NSURL>& url);
    void openBrowserToURLSupportedOrientations(const NSURL& url,
                                               GADSupportedOrientations orientations);
    void openWebAppSupportedOrientations(const NSURL& url, GADSupportedOrientations orientations);
    void openWebAppWithHTMLSupportedOrientations(const std::string& html,
                                                 GADSupportedOrientations orientations);
    /// Of a mailto address.
    void openEmailComposer(const NSURL& url);
    /// Whether a page can load the address.
    static bool isPageAddress(const NSURL& url);
    /// Opens any other address: a mail, or what the system has for it. Never a file.
    void openOutsideTheWeb(const NSURL& url);

    void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& controller,
                                                       MFMailComposeResult result,
                                                       const NSError* error) override;

private:
    void presentScreen(const std::shared_ptr<GADViewController>& screen,
                       GADSupportedOrientations orientations);
    void leaveApplicationForURL(const NSURL& url);
    /// Pings the ad's click addresses.
    void didOpen();

    std::shared_ptr<GADDelegateManager> delegateManager_;
    std::weak_ptr<UIViewController> viewController_;
    std::optional<NSURL> referringURL_;
    std::weak_ptr<GADWebView> openingWebView_;
    std::weak_ptr<GADObjectPrivate> adController_;
};

}
