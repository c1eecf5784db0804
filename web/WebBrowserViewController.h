#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLConnectionDelegate.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWebViewDelegate.h"
#include "web/PageVisits.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class AddressPrompt;
class FormResubmission;
class UIBarButtonItem;
class UIToolbar;
class UIWebView;
class WebBrowserToolbar;

/// The in-application web browser: one page, a toolbar below it, and a second look at every
/// request. A probe connection learns each response's media type; a video or audio file opens the
/// download screen. The page engine's own response may come before the probe's: each tap opens at
/// most one screen, and the engine never shows such a file.
///
/// Until the first response that is not a media file (the start gate), the page engine loads
/// nothing.
class WebBrowserViewController : public UIViewController,
                                 public UIWebViewDelegate,
                                 public NSURLConnectionDelegate {
public:
    /// An address that does not parse leaves the page blank.
    static std::shared_ptr<WebBrowserViewController> withTitleURL(std::string title,
                                                                  const std::string& address);
    /// Without title and address, the start gate open.
    WebBrowserViewController();
    ~WebBrowserViewController() override;

    const std::string& navigationBarTitle() const { return navigationBarTitle_; }
    const std::optional<NSURL>& URL() const { return URL_; }
    const std::shared_ptr<UIWebView>& webView() const { return webView_; }
    std::shared_ptr<UIToolbar> toolbar() const; ///< null while the view is not loaded
    /// The start gate: true while the page engine may not load anything itself.
    bool download() const { return download_; }

    void openURL(const std::optional<NSURL>& url);
    void openRequest(const NSURLRequest& request);
    void downloadFileAtURL(const NSURL& url);

    void backAction();
    void forwardAction();
    void refreshAction();
    void stopAction();
    void homeAction();
    /// Asks for an address and opens it.
    void addressAction();

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidUnload() override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;
    /// Shortcuts: reload, address, back, forward and zoom.
    bool performCommand(UICommand command) override;

    bool webViewShouldStartLoadWithRequest(UIWebView& webView, const NSURLRequest& request,
                                           UIWebViewNavigationType navigationType) override;
    bool webViewShouldStartNavigation(UIWebView& webView, const NSURLRequest& request,
                                      const UIWebViewNavigation& navigation) override;
    bool webViewShouldShowResponse(UIWebView& webView, const NSURLResponse& response) override;
    void webViewDidStartLoad(UIWebView& webView) override;
    void webViewDidFinishLoad(UIWebView& webView) override;
    void webViewDidFailLoadWithError(UIWebView& webView, const NSError& error) override;

    std::optional<NSURLRequest>
    connectionWillSendRequestRedirectResponse(NSURLConnection& connection,
                                              const NSURLRequest& request,
                                              const NSURLResponse* redirectResponse) override;
    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override;

private:
    bool zoom(double factor);
    void addToolbar();
    void updateHistoryButtons();
    void loadEnded();
    void openMedia(const NSURL& url);

    std::string navigationBarTitle_;
    std::optional<NSURL> URL_;
    std::shared_ptr<UIWebView> webView_;
    std::unique_ptr<WebBrowserToolbar> toolbar_;
    std::shared_ptr<UIBarButtonItem> activityItem_;
    bool download_ = false;
    PageVisits visits_;
    std::vector<std::string> offered_; ///< media that have opened a screen over this one
    std::shared_ptr<FormResubmission> resubmission_;
    std::shared_ptr<AddressPrompt> addressPrompt_;
};

}
