#pragma once
#include "platform/host/ForeignContent.h"
#include "platform/host/Network.h"

#include <functional>
#include <memory>
#include <optional>
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
    /// Moves within the loaded document; nothing is requested.
    bool isSameDocument = false;
    /// The page that it comes from; empty for a load that the application requested.
    std::string mainDocumentURL{};
};

/// The head of a navigation's response, before any of it is shown.
struct WebResponse {
    std::string url;
    std::string mimeType;
    int status = 0;
    HeaderFields headers;
    bool isMainFrame = true;
    std::string requestMethod = "GET"; ///< method of the navigation it answers
};

struct WebError {
    /// The process that ran the page is gone, and the page with it.
    static constexpr int kProcessEnded = 2;
    static constexpr int kCertificate = -1202;

    int code = 0; ///< negative: NSURLErrorDomain's number; positive: the engine's own
    std::string message;
    std::string url;
};

/// A server asks for a user name and a password.
struct WebChallenge {
    std::string origin; ///< scheme, host and port
    std::string realm;
    bool isBasic = false;    ///< the password is sent as it is
    bool isRejected = false; ///< the previous credential was wrong
};

struct WebCredential {
    std::string user;
    std::string password;
};

/// Receives a page's events, on the loop.
class WebPageClient {
public:
    virtual ~WebPageClient() = default;
    /// Before every navigation; false cancels it.
    virtual bool webPageShouldNavigate(const WebNavigation& navigation) = 0;
    /// Before a response is shown; false cancels the load.
    virtual bool webPageShouldShowResponse(const WebResponse& response) = 0;
    /// Call `answer` at most once, at any time; with nothing, the load continues without a
    /// credential.
    virtual void
    webPageNeedsCredential(const WebChallenge& challenge,
                           std::function<void(std::optional<WebCredential>)> answer) = 0;
    virtual void webPageDidStartLoad() = 0;
    virtual void webPageDidFinishLoad() = 0;
    virtual void webPageDidFailLoad(const WebError& error) = 0;
};

/// One web page of the engine.
class WebPage : public ForeignContent {
public:
    /// Null: nobody is asked, and every navigation that the engine allows is made.
    virtual void setClient(WebPageClient* client) = 0;
    virtual void load(const std::string& url, const HeaderFields& headers) = 0;
    virtual void loadHTML(const std::string& html, const std::string& baseURL) = 0;
    /// Shows `html` in place of the page at `url`, which a reload requests again. The client
    /// is not asked.
    virtual void showNotice(const std::string& html, const std::string& url) = 0;
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
    /// Enlarges the page's texts and pictures; 1 is its own size.
    virtual void setZoom(double zoom) = 0;
    virtual void setTransparentBackground(bool transparent) = 0;
    /// False lets films without sound start by themselves; sound always waits for a touch.
    virtual void setMediaPlaybackRequiresUserAction(bool needed) = 0;
    virtual std::string userAgent() const = 0;
};

/// Pages of one session share cookies, cache and storage, and nothing with other sessions.
enum class WebSession {
    Browsing, ///< the user's: kept on disk, shares the application's cookies
    Guest     ///< third-party pages, such as ads: nothing outlives the process
};

class WebEngine {
public:
    virtual ~WebEngine() = default;
    /// Null when the page engine cannot be loaded; the reason is in the log.
    virtual std::shared_ptr<WebPage> createPage(WebSession session) = 0;
    /// Prepares for the first page, in small steps.
    virtual void warmUp() = 0;
};

}
