#pragma once
#include "platform/host/Network.h"
#include "tests/support/Testing.h"

#include <deque>
#include <random>

namespace vistrel::host {
class EventLoop;
}

namespace vistrel::support {

/// The scripted network's answer for an address: `at(url).type("video/mp4").body("…")`.
class ScriptedAnswer {
public:
    ScriptedAnswer& status(int status) { return set(status_, status); }
    /// The media type as the client is told it.
    ScriptedAnswer& type(std::string mimeType) { return set(mimeType_, std::move(mimeType)); }
    ScriptedAnswer& header(std::string name, std::string value) {
        headers_.emplace_back(std::move(name), std::move(value));
        return *this;
    }
    /// Also announces its length, unless announces() says otherwise.
    ScriptedAnswer& body(std::string bytes) { return set(body_, std::move(bytes)); }
    /// The length in the answer's head; -1: unknown. Fewer bytes than announced end in a failure.
    ScriptedAnswer& announces(std::int64_t length) { return set(announced_, length); }
    /// Sizes of the first chunks; by default the body is split at random, but reproducible, points.
    ScriptedAnswer& chunks(std::vector<std::size_t> sizes) {
        return set(chunks_, std::move(sizes));
    }
    /// Seconds before the head, and between chunks.
    ScriptedAnswer& after(double seconds) { return set(delay_, seconds); }
    ScriptedAnswer& secondsBetweenChunks(double seconds) { return set(interval_, seconds); }
    ScriptedAnswer& redirectsTo(const std::string& url, int status = 302) {
        location_ = url;
        return header("Location", url).status(status);
    }
    /// Sends nothing, not even a head.
    ScriptedAnswer& neverAnswers() { return set(silent_, true); }
    ScriptedAnswer& failsAfter(std::size_t bytes, host::TransferErrorKind kind,
                               std::string message) {
        failsAt_ = bytes;
        return set(error_, host::TransferError{kind, std::move(message)});
    }
    /// Fails before the head.
    ScriptedAnswer& fails(host::TransferErrorKind kind, std::string message) {
        failsBeforeHead_ = true;
        return set(error_, host::TransferError{kind, std::move(message)});
    }

private:
    friend class ScriptedTransfer;

    template <typename Field, typename Value>
    ScriptedAnswer& set(Field& field, Value value) {
        field = std::move(value);
        return *this;
    }

    int status_ = 200;
    std::string mimeType_ = "text/html";
    host::HeaderFields headers_;
    std::string body_;
    std::optional<std::int64_t> announced_;
    std::vector<std::size_t> chunks_;
    double delay_ = 0;
    double interval_ = 0;
    std::string location_;
    bool silent_ = false;
    std::optional<std::size_t> failsAt_;
    bool failsBeforeHead_ = false;
    host::TransferError error_;
};

/// A network of scripted answers on the virtual clock. Records every request, including each hop
/// of a redirect. Addresses without an answer cannot be connected to.
class ScriptedNetwork : public host::Network {
public:
    explicit ScriptedNetwork(host::EventLoop& loop);
    ~ScriptedNetwork() override;

    std::unique_ptr<host::Transfer> start(host::TransferRequest request,
                                          host::TransferClient& client) override;
    void watchReachability(const std::string& hostName,
                           std::function<void(host::Reachability)> handler) override;
    /// The host that is watched; empty when none is.
    const std::string& watchedHost() const { return watchedHost_; }

    /// The answer for the address from now on.
    ScriptedAnswer& at(const std::string& url);
    /// A further answer, given after each of those before it has been given once.
    ScriptedAnswer& thenAt(const std::string& url) { return answers_[url].emplace_back(); }

    const std::vector<host::TransferRequest>& requests() const { return requests_; }
    std::vector<std::string> requestedURLs() const;
    void forgetRequests() { requests_.clear(); }
    /// The request's field of that name; empty when absent.
    static std::string header(const host::TransferRequest& request, const std::string& name);
    int runningTransfers() const { return *running_; }
    void setReachability(host::Reachability reachability);

private:
    friend class ScriptedTransfer;
    std::optional<ScriptedAnswer> take(const host::TransferRequest& request);

    host::EventLoop& loop_;
    std::map<std::string, std::deque<ScriptedAnswer>> answers_;
    std::vector<host::TransferRequest> requests_;
    std::mt19937 random_{20100401};
    std::shared_ptr<int> running_ = std::make_shared<int>(0);
    host::Reachability reachability_ = host::Reachability::WiFi;
    std::string watchedHost_;
    std::function<void(host::Reachability)> reachabilityHandler_;
};

}
