#pragma once
#include "platform/foundation/NSURLRequest.h"
#include "platform/host/WebEngine.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIWebViewDelegate.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// A web page in the view tree. The page engine is asked for a page at the first use. Main thread
/// only; the delegate is not retained.
class UIWebView : public UIView, private host::WebPageClient {
public:
    explicit UIWebView(CGRect frame = {});
    ~UIWebView() override;

    /// Null detaches: every navigation that the engine allows is made, nobody is told.
    void setDelegate(UIWebViewDelegate* delegate);
    UIWebViewDelegate* delegate() const { return delegate_; }
    /// http, https and about only; a request without address does nothing.
    /// The delegate is asked about it like about any other load. Methods other than GET are not
    /// sent from here.
    void loadRequest(const NSURLRequest& request);
    void loadHTMLString(const std::string& html, const std::string& baseURL);
    void goBack();
    void goForward();
    void reload();
    void stopLoading();
    bool canGoBack() const;
    bool canGoForward() const;
    bool isLoading() const { return loading_; }
    std::string URLString() const;
    void setScalesPageToFit(bool scales);
    /// Runs a script in the loaded page; the result comes later, on the run loop, as text.
    void stringByEvaluatingJavaScriptFromString(const std::string& script,
                                                std::function<void(const std::string&)> done = {});
    /// The "User-Agent" header of its requests.
    std::string userAgent();

    void setOpaque(bool opaque);
    host::ForeignContent* foreignContent() override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    bool webPageShouldNavigate(const host::WebNavigation& navigation) override;
    bool webPageShouldShowResponse(const host::WebResponse& response) override;
    void webPageDidStartLoad() override;
    void webPageDidFinishLoad() override;
    void webPageDidFailLoad(const host::WebError& error) override;

    /// Made when first needed; null when there is no page engine.
    host::WebPage* page();

    UIWebViewDelegate* delegate_ = nullptr;
    std::unique_ptr<host::WebPage> page_;
    bool loading_ = false;
    bool scalesPageToFit_ = false;
};

}
