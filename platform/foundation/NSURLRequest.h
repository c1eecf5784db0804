#pragma once
#include "platform/foundation/NSURL.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel {

/// With the phone's numbers.
enum class NSURLRequestCachePolicy { UseProtocolCachePolicy = 0, ReloadIgnoringLocalCacheData = 1 };

/// Whose cookies a connection uses. The phone has one store for all.
enum class NSURLRequestCookies { SendAndStore, SendOnly, None };

/// A request for one address. A value type: what is a mutable request on the phone is a variable.
class NSURLRequest {
public:
    /// Without an address a connection fails with NSURLErrorBadURL.
    explicit NSURLRequest(
        std::optional<NSURL> URL,
        NSURLRequestCachePolicy cachePolicy = NSURLRequestCachePolicy::UseProtocolCachePolicy,
        double timeoutInterval = 60.0);

    const std::optional<NSURL>& URL() const { return URL_; }
    NSURLRequestCachePolicy cachePolicy() const { return cachePolicy_; }
    /// Seconds without a byte until the connection fails.
    double timeoutInterval() const { return timeoutInterval_; }

    const std::string& HTTPMethod() const { return method_; }
    void setHTTPMethod(std::string method) { method_ = std::move(method); }
    /// The field's value; names compare without case. Empty when absent.
    std::string valueForHTTPHeaderField(std::string_view field) const;
    /// Replaces a field of that name.
    void setValueForHTTPHeaderField(std::string value, std::string field);
    const std::vector<std::pair<std::string, std::string>>& allHTTPHeaderFields() const {
        return fields_;
    }

    NSURLRequestCookies cookies() const { return cookies_; }
    void setCookies(NSURLRequestCookies cookies) { cookies_ = cookies; }

    /// The page that makes the request; a server of another site then gets only the cookies that it
    /// shares with other sites. None: the application's own request.
    const std::optional<NSURL>& mainDocumentURL() const { return mainDocumentURL_; }
    void setMainDocumentURL(std::optional<NSURL> url) { mainDocumentURL_ = std::move(url); }

    /// True for safe methods, which may be repeated without side effects (GET, HEAD):
    /// RFC 9110, 9.2.1.
    bool isSafeToRepeat() const;

private:
    std::optional<NSURL> URL_;
    std::optional<NSURL> mainDocumentURL_;
    NSURLRequestCachePolicy cachePolicy_;
    double timeoutInterval_;
    std::string method_ = "GET";
    std::vector<std::pair<std::string, std::string>> fields_;
    NSURLRequestCookies cookies_ = NSURLRequestCookies::SendAndStore;
};

}
