#include "platform/foundation/NSURLConnection.h"

#include "platform/foundation/HTTPRedirect.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/foundation/Weakly.h"
#include "platform/host/Host.h"

#include <utility>

namespace vistrel {

namespace {

/// The transfer counts its own redirects, but not those that start a new transfer.
constexpr int kMostRestarts = 20;

host::CookieUse cookieUse(NSURLRequestCookies cookies) {
    switch (cookies) {
    case NSURLRequestCookies::SendOnly:
        return host::CookieUse::SendOnly;
    case NSURLRequestCookies::None:
        return host::CookieUse::None;
    case NSURLRequestCookies::SendAndStore:
        break;
    }
    return host::CookieUse::SendAndStore;
}

std::string authorization(const NSURLRequest& request) {
    return NSURLCredentialStorage::sharedCredentialStorage().authorizationForURL(*request.URL());
}

host::TransferRequest transferRequest(const NSURLRequest& request) {
    host::TransferRequest transfer;
    transfer.url = request.URL()->absoluteString();
    transfer.method = request.HTTPMethod();
    transfer.headers = request.allHTTPHeaderFields();
    const std::string known = authorization(request);
    if (!known.empty() && request.valueForHTTPHeaderField("Authorization").empty())
        transfer.headers.emplace_back("Authorization", known);
    transfer.timeout = request.timeoutInterval();
    transfer.ignoresCache =
        request.cachePolicy() == NSURLRequestCachePolicy::ReloadIgnoringLocalCacheData;
    if (request.mainDocumentURL())
        transfer.mainDocumentURL = request.mainDocumentURL()->absoluteString();
    transfer.cookies = cookieUse(request.cookies());
    return transfer;
}

NSURLErrorCode codeOf(host::TransferErrorKind kind) {
    switch (kind) {
    case host::TransferErrorKind::BadURL:
        return NSURLErrorBadURL;
    case host::TransferErrorKind::UnsupportedScheme:
        return NSURLErrorUnsupportedURL;
    case host::TransferErrorKind::CannotConnect:
        return NSURLErrorCannotConnectToHost;
    case host::TransferErrorKind::TimedOut:
        return NSURLErrorTimedOut;
    case host::TransferErrorKind::ConnectionLost:
        return NSURLErrorNetworkConnectionLost;
    case host::TransferErrorKind::TooManyRedirects:
        return NSURLErrorHTTPTooManyRedirects;
    case host::TransferErrorKind::Security:
        return NSURLErrorSecureConnectionFailed;
    case host::TransferErrorKind::Other:
        break;
    }
    return NSURLErrorUnknown;
}

/// Nothing when the host reports an invalid address.
std::optional<NSURLResponse> responseFrom(const host::TransferResponse& response) {
    auto url = NSURL::URLWithString(response.url);
    if (!url)
        return std::nullopt;
    return NSURLResponse(std::move(*url), response.status, response.headers, response.mimeType,
                         response.expectedLength);
}

NSURLRequest requestAfter(const HTTPRedirect& redirect, const NSURLRequest& original,
                          const NSURL& url) {
    const std::string& method = original.HTTPMethod();
    NSURLRequest request(url, original.cachePolicy(), original.timeoutInterval());
    for (auto& [field, value] : redirect.fieldsAfter(original.allHTTPHeaderFields(), method))
        request.setValueForHTTPHeaderField(std::move(value), std::move(field));
    request.setMainDocumentURL(original.mainDocumentURL());
    request.setHTTPMethod(redirect.methodAfter(method));
    request.setCookies(original.cookies());
    return request;
}

bool sendsTheSame(const NSURLRequest& a, const NSURLRequest& b) {
    return a.URL() == b.URL() && a.HTTPMethod() == b.HTTPMethod() &&
           a.allHTTPHeaderFields() == b.allHTTPHeaderFields() && a.cookies() == b.cookies() &&
           a.cachePolicy() == b.cachePolicy();
}

}

NSURLConnection::NSURLConnection(NSURLRequest request,
                                 std::shared_ptr<NSURLConnectionDelegate> delegate)
    : request_(std::move(request))
    , current_(request_)
    , delegate_(std::move(delegate)) {}

NSURLConnection::~NSURLConnection() = default;

std::shared_ptr<NSURLConnection>
NSURLConnection::withRequestDelegate(NSURLRequest request,
                                     std::shared_ptr<NSURLConnectionDelegate> delegate,
                                     StartsImmediately starts) {
    std::shared_ptr<NSURLConnection> connection(
        new NSURLConnection(std::move(request), std::move(delegate)));
    if (starts == StartsImmediately::Yes)
        connection->start();
    return connection;
}

void NSURLConnection::start() {
    if (keepAlive_ || !delegate_)
        return;
    keepAlive_ = shared_from_this();
    pending_ = NSRunLoop::performAfterDelay(0, weakly(this, &NSURLConnection::begin));
}

void NSURLConnection::begin() {
    pending_ = 0;
    const auto self = shared_from_this();
    const auto delegate = delegate_;
    if (!request_.URL()) {
        fail(NSURLErrorBadURL, "bad URL");
        return;
    }
    auto request = delegate->connectionWillSendRequestRedirectResponse(*this, request_, nullptr);
    if (!isRunning())
        return;
    if (!request) {
        end();
        return;
    }
    send(std::move(*request));
}

void NSURLConnection::send(NSURLRequest request) {
    current_ = std::move(request);
    if (!current_.URL()) {
        fail(NSURLErrorBadURL, "bad URL");
        return;
    }
    transfer_ = host::current().network->start(transferRequest(current_), *this);
}

void NSURLConnection::cancel() {
    end();
}

void NSURLConnection::end() {
    const auto self = std::exchange(keepAlive_, nullptr);
    NSRunLoop::cancelPerform(std::exchange(pending_, 0));
    transfer_.reset();
    // Last: releasing the delegate may destroy the caller.
    const auto delegate = std::exchange(delegate_, nullptr);
}

void NSURLConnection::fail(int code, const std::string& description) {
    const auto self = shared_from_this();
    const auto delegate = delegate_;
    end();
    // The user reads the description.
    delegate->connectionDidFailWithError(
        *this, NSError(NSURLErrorDomain, code, NSLocalizedString(description)));
}

bool NSURLConnection::transferWillRedirect(const host::TransferResponse& redirect,
                                           const std::string& url) {
    const auto self = shared_from_this();
    const auto delegate = delegate_;
    const auto response = responseFrom(redirect);
    auto target = NSURL::URLWithString(url);
    if (!response || !target) {
        fail(NSURLErrorBadURL, "The server redirected to an invalid address.");
        return false;
    }
    const NSURLRequest next =
        requestAfter({redirect.status, current_.URL()->absoluteString(), url}, current_, *target);
    auto chosen = delegate->connectionWillSendRequestRedirectResponse(*this, next, &*response);
    if (!isRunning())
        return false;
    if (!chosen) {
        stopAtRedirect(*response);
        return false;
    }
    // The transfer does not know the credentials for another origin.
    const bool keepsCredential = authorization(current_) == authorization(next);
    if (keepsCredential && sendsTheSame(*chosen, next)) {
        current_ = std::move(*chosen);
        return true;
    }
    transfer_.reset();
    if (++restarts_ > kMostRestarts)
        fail(NSURLErrorHTTPTooManyRedirects, "too many HTTP redirects");
    else
        send(std::move(*chosen));
    return false;
}

void NSURLConnection::stopAtRedirect(const NSURLResponse& response) {
    const auto delegate = delegate_;
    transfer_.reset();
    delegate->connectionDidReceiveResponse(*this, response);
    if (!isRunning())
        return;
    end();
    delegate->connectionDidFinishLoading(*this);
}

void NSURLConnection::transferDidReceiveResponse(const host::TransferResponse& response) {
    const auto self = shared_from_this();
    const auto delegate = delegate_;
    const auto received = responseFrom(response);
    if (!received) {
        fail(NSURLErrorBadURL, "The response came from an invalid address.");
        return;
    }
    delegate->connectionDidReceiveResponse(*this, *received);
}

void NSURLConnection::transferDidReceiveData(std::span<const std::byte> bytes) {
    const auto self = shared_from_this();
    const auto delegate = delegate_;
    delegate->connectionDidReceiveData(*this, bytes);
}

void NSURLConnection::transferDidFinish() {
    const auto self = shared_from_this();
    const auto delegate = delegate_;
    end();
    delegate->connectionDidFinishLoading(*this);
}

void NSURLConnection::transferDidFail(const host::TransferError& error) {
    fail(codeOf(error.kind), error.message);
}

}
