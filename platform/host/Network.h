#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vistrel::host {

using HeaderFields = std::vector<std::pair<std::string, std::string>>;

/// Which cookies a transfer sends, and whether it stores those that it receives.
enum class CookieUse { SendAndStore, SendOnly, None };

struct TransferRequest {
    std::string url;
    std::string method = "GET";
    HeaderFields headers;
    double timeout = 60; ///< seconds without a byte until the transfer fails
    bool ignoresCache = false;
    CookieUse cookies = CookieUse::SendAndStore;
    /// The page that makes the request, for the cookies' SameSite rules; empty: none.
    std::string mainDocumentURL{};
};

struct TransferResponse {
    std::string url; ///< the address that answered
    int status = 0;
    HeaderFields headers;
    std::string mimeType; ///< type and subtype as sent, without parameters; empty when none
    std::int64_t expectedLength =
        -1; ///< bytes that will be delivered; -1 when unknown or compressed
};

enum class TransferErrorKind {
    BadURL,
    UnsupportedScheme,
    CannotConnect,
    TimedOut,
    ConnectionLost, ///< also a body shorter than announced
    TooManyRedirects,
    Security,
    Other
};

struct TransferError {
    TransferErrorKind kind = TransferErrorKind::Other;
    std::string message; ///< for people
};

/// Receives one transfer's events, on the loop, never during Network::start.
class TransferClient {
public:
    virtual ~TransferClient() = default;
    /// A redirect answer, before it is followed. Return false to stop; nothing is reported then.
    /// Also called for an address that is neither http nor https; following it fails.
    virtual bool transferWillRedirect(const TransferResponse& redirect, const std::string& url) = 0;
    virtual void transferDidReceiveResponse(const TransferResponse& response) = 0;
    virtual void transferDidReceiveData(std::span<const std::byte> bytes) = 0;
    virtual void transferDidFinish() = 0;
    virtual void transferDidFail(const TransferError& error) = 0;
};

/// A running transfer. Destroying it cancels it, even during a call to the client, which then
/// hears nothing more.
class Transfer {
public:
    virtual ~Transfer() = default;
};

enum class Reachability { Unknown, NotReachable, WiFi, Cellular };

class Network {
public:
    virtual ~Network() = default;
    /// Starts an HTTP(S) transfer. Redirects are followed, http and https only, at most 20.
    virtual std::unique_ptr<Transfer> start(TransferRequest request, TransferClient& client) = 0;
    /// Reports how the host of that name can be reached: once soon, then at each change of the
    /// network. One host at a time; an empty function ends it.
    virtual void watchReachability(const std::string& hostName,
                                   std::function<void(Reachability)> handler) = 0;
};

}
