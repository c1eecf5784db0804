#pragma once
#include "platform/host/ForeignContent.h"
#include "platform/host/Network.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel::host {

enum class WebNavigationType {
    LinkClicked,
    FormSubmitted,
    BackForward,
    Reload,
    FormResubmitted,
    Other
};

/// One navigation that the page engine is about to make: top level, frame or redirect.
struct WebNavigation {
    std::string url;
    std::string method = "GET";
    HeaderFields headers;
    WebNavigationType type = WebNavigationType::Other;
    bool isRedirect = false;
};

/// What the engine learned of a navigation's answer before it shows it.
struct WebResponse {
    std::string url;
    std::string mimeType;
    int status = 0;
    HeaderFields headers;
    bool isMainFrame = true;
    std::string requestMethod = "GET"; ///< method of the navigation it answers
};

struct WebError {
    int code = 0; ///< negative: NSURLErrorDomain's number; positive: the engine's own
    std::string message;
    std::string url;
};

/// Hears a page's events, on the loop.
class WebPageClient {
public:
    virtual ~WebPageClient() = default;
    /// Before every navigation; false: it is not made.
    virtual bool webPageShouldNavigate(const WebNavigation& navigation) = 0;
    /// Before an answer is shown; false: the load is dropped.
    virtual bool webPageShouldShowResponse(const WebResponse& response) = 0;
    virtual void webPageDidStartLoad() = 0;
    virtual void webPageDidFinishLoad() = 0;
    virtual void webPageDidFailLoad(const WebError& error) = 0;
};

/// One web page of the engine.
class WebPage : public ForeignContent {
public:
    /// Null: nobody is asked; every navigation that the engine itself allows is made.
    virtual void setClient(WebPageClient* client) = 0;
    virtual void load(const std::string& url, const HeaderFields& headers) = 0;
    virtual void loadHTML(const std::string& html, const std::string& baseURL) = 0;
    virtual void goBack() = 0;
    virtual void goForward() = 0;
    virtual void reload() = 0;
    virtual void stopLoading() = 0;
    virtual bool canGoBack() const = 0;
    virtual bool canGoForward() const = 0;
    virtual std::string url() const = 0;
    virtual std::string title() const = 0;
    /// Runs a script in the main frame; `done` gets the result as text ("" for none or a failure).
    virtual void evaluate(const std::string& script,
                          std::function<void(const std::string&)> done) = 0;
    virtual void setScalesPageToFit(bool scales) = 0;
    virtual void setTransparentBackground(bool transparent) = 0;
    virtual std::string userAgent() const = 0;
};

class WebEngine {
public:
    virtual ~WebEngine() = default;
    /// Null when the page engine cannot be loaded; the reason is in the log.
    virtual std::unique_ptr<WebPage> createPage() = 0;
    /// Starts what the first page will need, in small steps; called once the first frame is shown.
    virtual void warmUp() = 0;
};

}
