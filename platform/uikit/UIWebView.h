#pragma once
#include "platform/foundation/NSURLRequest.h"
#include "platform/host/WebEngine.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIWebViewDelegate.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vistrel {

/// Numbers are the phone's.
enum class UIDataDetectorTypes : unsigned { None = 0, PhoneNumber = 1, Link = 2, All = ~0U };

/// Beyond the phone: whose pages a view shows. Pages of strangers, such as ads, share no cookies,
/// cache or storage with the user's; nothing of theirs outlives the process, and they have no
/// access to clipboard, location, notifications or camera.
enum class UIWebViewSession { Browsing, Guest };

/// A web page in the view tree. The page engine is asked for a page at the first use. Pages run
/// their scripts whether or not the view is on screen. Main thread only; the delegate is not
/// retained.
class UIWebView : public UIView, private host::WebPageClient {
public:
    explicit UIWebView(CGRect frame = {}, UIWebViewSession session = UIWebViewSession::Browsing);
    ~UIWebView() override;

    /// Beyond the phone: prepares the page engine, which takes memory, for a page that is likely to
    /// be wanted soon.
    static void prepareEngine();

    /// Without a delegate every navigation that the engine allows is performed.
    void setDelegate(std::weak_ptr<UIWebViewDelegate> delegate);
    /// Null when unset or gone.
    std::shared_ptr<UIWebViewDelegate> delegate() const { return delegate_.lock(); }
    /// Loads http, https and about addresses with GET, after asking the delegate; ignores other
    /// requests.
    void loadRequest(const NSURLRequest& request);
    void loadHTMLStringBaseURL(const std::string& html, const std::optional<NSURL>& baseURL);
    /// Beyond the phone: shows `html` in place of the page at `url`, which a reload requests again.
    /// The delegate is not asked.
    void showNotice(const std::string& html, const NSURL& url);
    void goBack();
    void goForward();
    void reload();
    void stopLoading();
    bool canGoBack() const;
    bool canGoForward() const;
    bool isLoading() const { return loading_; }
    /// The address of the page; none before the first load.
    NSURLRequest request() const;
    std::string URLString() const;
    void setScalesPageToFit(bool scales);
    /// Beyond the phone: enlarges texts and pictures; between 0.5 and 3, 1 at first.
    void setPageZoom(double zoom);
    double pageZoom() const { return pageZoom_; }
    /// Muted video may start by itself unless this is set. Sound always waits for a touch.
    void setMediaPlaybackRequiresUserAction(bool needed);
    /// Accepted for compatibility; only what a page marks as a link is a link.
    void setDataDetectorTypes(UIDataDetectorTypes types) { dataDetectorTypes_ = types; }
    UIDataDetectorTypes dataDetectorTypes() const { return dataDetectorTypes_; }
    /// Runs a script in the loaded page; the result comes later, on the run loop, as text.
    void stringByEvaluatingJavaScriptFromString(const std::string& script,
                                                std::function<void(const std::string&)> done = {});
    /// The "User-Agent" header of its requests.
    std::string userAgent();

    void setOpaque(bool opaque);
    host::ForeignContent* foreignContent() override;
    UIAccessibilityElement accessibilityElement() const override;
    bool canBecomeFirstResponder() const override { return page_ != nullptr; }

private:
    bool webPageShouldNavigate(const host::WebNavigation& navigation) override;
    bool webPageShouldShowResponse(const host::WebResponse& response) override;
    void webPageDidStartLoad() override;
    void webPageDidFinishLoad() override;
    void webPageDidFailLoad(const host::WebError& error) override;

    void
    webPageNeedsCredential(const host::WebChallenge& challenge,
                           std::function<void(std::optional<host::WebCredential>)> answer) override;

    /// Made when first needed; null when there is no page engine.
    host::WebPage* page();
    void sayThatPagesAreMissing();
    NSURLRequest requestOf(const host::WebNavigation& navigation) const;

    UIWebViewSession session_;
    std::weak_ptr<UIWebViewDelegate> delegate_;
    std::shared_ptr<host::WebPage> page_;
    UIDataDetectorTypes dataDetectorTypes_ = UIDataDetectorTypes::None;
    double pageZoom_ = 1;
    bool loading_ = false;
    bool scalesPageToFit_ = false;
    bool mediaNeedsTouch_ = false;
};

}
