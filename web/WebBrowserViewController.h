#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLConnectionDelegate.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWebViewDelegate.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UIBarButtonItem;
class UIToolbar;
class UIWebView;

/// The in-application web browser: one page, a toolbar below it, and a second look at every
/// request. A probe connection learns each answer's media type; a video or audio file opens the
/// download screen. A request that must not be sent twice is not probed: the page engine's own
/// answer tells its type.
///
/// Until the first answer that is no media file has come (the start gate), the page engine loads
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
    const std::shared_ptr<UIToolbar>& toolbar() const { return toolbar_; }
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

    void viewDidLoad() override;
    void viewWillDisappear(bool animated) override;
    void viewDidUnload() override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;

    bool webViewShouldStartLoadWithRequest(UIWebView& webView, const NSURLRequest& request,
                                           UIWebViewNavigationType navigationType) override;
    bool webViewShouldShowResponseForUnrepeatableRequest(UIWebView& webView,
                                                         const NSURLResponse& response) override;
    void webViewDidStartLoad(UIWebView& webView) override;
    void webViewDidFinishLoad(UIWebView& webView) override;
    void webViewDidFailLoadWithError(UIWebView& webView, const NSError& error) override;

    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override;

private:
    void makeToolbarItems();
    void updateHistoryButtons();
    void loadEnded();
    std::shared_ptr<NSURLConnectionDelegate> asConnectionDelegate();

    std::string navigationBarTitle_;
    std::optional<NSURL> URL_;
    std::shared_ptr<UIWebView> webView_;
    std::shared_ptr<UIToolbar> toolbar_;
    std::shared_ptr<UIBarButtonItem> backButton_;
    std::shared_ptr<UIBarButtonItem> forwardButton_;
    std::shared_ptr<UIBarButtonItem> refreshButton_;
    std::shared_ptr<UIBarButtonItem> stopButton_;
    std::shared_ptr<UIBarButtonItem> activityItem_;
    bool download_ = false;
};

/// Whether the media type, exactly as sent, is one that the application downloads.
bool isDownloadableMIMEType(const std::string& mimeType);

}
