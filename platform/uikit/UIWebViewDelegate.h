#pragma once

namespace vistrel {
class NSError;
class NSURLRequest;
class NSURLResponse;
class UIWebView;

/// Numbers are the phone's.
enum class UIWebViewNavigationType {
    LinkClicked = 0,
    FormSubmitted = 1,
    BackForward = 2,
    Reload = 3,
    FormResubmitted = 4,
    Other = 5
};

class UIWebViewDelegate {
public:
    virtual ~UIWebViewDelegate() = default;
    /// Before every load: top level, frames and redirects. False: it is not made.
    virtual bool webViewShouldStartLoadWithRequest(UIWebView&, const NSURLRequest&,
                                                   UIWebViewNavigationType) {
        return true;
    }
    virtual void webViewDidStartLoad(UIWebView&) {}
    virtual void webViewDidFinishLoad(UIWebView&) {}
    virtual void webViewDidFailLoadWithError(UIWebView&, const NSError&) {}
    /// Beyond the phone: the answer to a request that must not be sent a second time (a POST),
    /// before it is shown. False: the engine drops it.
    virtual bool webViewShouldShowResponseForUnrepeatableRequest(UIWebView&, const NSURLResponse&) {
        return true;
    }
};

}
