#pragma once
#include <cstddef>
#include <optional>
#include <span>

namespace vistrel {

class NSError;
class NSURLConnection;
class NSURLRequest;
class NSURLResponse;

/// Receives one connection's events on the main run loop, in the order response, data, finish or
/// failure.
class NSURLConnectionDelegate {
public:
    virtual ~NSURLConnectionDelegate() = default;

    /// Before a request is sent because of a redirect; the response is the redirect answer. Return
    /// the request to send, or nothing to stop with the redirect answer as the response.
    virtual std::optional<NSURLRequest>
    connectionWillSendRequestRedirectResponse(NSURLConnection& connection,
                                              const NSURLRequest& request,
                                              const NSURLResponse* redirectResponse);
    virtual void connectionDidReceiveResponse(NSURLConnection& connection,
                                              const NSURLResponse& response);
    virtual void connectionDidReceiveData(NSURLConnection& connection,
                                          std::span<const std::byte> data);
    virtual void connectionDidFinishLoading(NSURLConnection& connection);
    virtual void connectionDidFailWithError(NSURLConnection& connection, const NSError& error);
};

}
