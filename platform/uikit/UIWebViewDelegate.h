#pragma once

namespace vistrel {
class NSError;
class NSURLRequest;
class NSURLResponse;
class UIWebView;

/// The page engine's errors; those of the network are in NSURLErrorDomain.
inline constexpr const char* WebKitErrorDomain = "WebKitErrorDomain";
inline constexpr int WebKitErrorWebContentProcessTerminated = 2;

/// Numbers are the phone's.
enum class UIWebViewNavigationType {
    LinkClicked = 0,
    FormSubmitted = 1,
    BackForward = 2,
    Reload = 3,
    FormResubmitted = 4,
    Other = 5
};

/// Beyond the phone: what is known about a navigation besides its request.
struct UIWebViewNavigation {
    UIWebViewNavigationType type = UIWebViewNavigationType::Other;
    bool isRedirect = false;
    /// Moves within a document that is already loaded; nothing is requested.
    bool isSameDocument = false;
};

class UIWebViewDelegate {
public:
    virtual ~UIWebViewDelegate() = default;
    /// Before every load: top level, frames and redirects. False: it is not made.
    virtual bool webViewShouldStartLoadWithRequest(UIWebView&, const NSURLRequest&,
                                                   UIWebViewNavigationType) {
        return true;
    }
    /// Beyond the phone: the same question with more detail.
    virtual bool webViewShouldStartNavigation(UIWebView& webView, const NSURLRequest& request,
                                              const UIWebViewNavigation& navigation) {
        return webViewShouldStartLoadWithRequest(webView, request, navigation.type);
    }
    virtual void webViewDidStartLoad(UIWebView&) {}
    virtual void webViewDidFinishLoad(UIWebView&) {}
    virtual void webViewDidFailLoadWithError(UIWebView&, const NSError&) {}
    /// Beyond the phone: before a response is shown, in the page or in a frame. False: it is not.
    virtual bool webViewShouldShowResponse(UIWebView&, const NSURLResponse&) { return true; }
};

}
