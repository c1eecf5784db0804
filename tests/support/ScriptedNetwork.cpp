#include "tests/support/ScriptedNetwork.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "tests/support/ScriptedTransfer.h"

namespace vistrel::support {

ScriptedAnswer& ScriptedAnswer::header(std::string name, std::string value) {
    headers_.emplace_back(std::move(name), std::move(value));
    return *this;
}

ScriptedAnswer& ScriptedAnswer::redirectsTo(std::string url, int status) {
    status_ = status;
    location_ = std::move(url);
    headers_.emplace_back("Location", location_);
    return *this;
}

ScriptedAnswer& ScriptedAnswer::failsAfter(std::size_t bytes, host::TransferErrorKind kind,
                                           std::string message) {
    failsAt_ = bytes;
    return set(error_, host::TransferError{kind, std::move(message)});
}

ScriptedAnswer& ScriptedAnswer::fails(host::TransferErrorKind kind, std::string message) {
    failsBeforeHead_ = true;
    return set(error_, host::TransferError{kind, std::move(message)});
}

ScriptedNetwork::ScriptedNetwork(host::EventLoop& loop)
    : loop_(loop) {}

ScriptedNetwork::~ScriptedNetwork() = default;

std::unique_ptr<host::Transfer> ScriptedNetwork::start(host::TransferRequest request,
                                                       host::TransferClient& client) {
    return std::make_unique<ScriptedTransfer>(*this, std::move(request), client);
}

ScriptedAnswer& ScriptedNetwork::at(const std::string& url) {
    answers_[url].clear();
    return answers_[url].emplace_back();
}

std::optional<ScriptedAnswer> ScriptedNetwork::take(const host::TransferRequest& request) {
    requests_.push_back(request);
    const auto found = answers_.find(request.url);
    if (found == answers_.end())
        return std::nullopt;
    auto& answers = found->second;
    ScriptedAnswer answer = answers.front();
    // The last one stays for good.
    if (answers.size() > 1)
        answers.pop_front();
    return answer;
}

std::vector<std::string> ScriptedNetwork::requestedURLs() const {
    std::vector<std::string> urls;
    urls.reserve(requests_.size());
    for (const auto& request : requests_)
        urls.push_back(request.url);
    return urls;
}

std::string ScriptedNetwork::header(const host::TransferRequest& request, const std::string& name) {
    return valueOfHeaderField(request.headers, name);
}

void ScriptedNetwork::watchReachability(const std::string& hostName,
                                        std::function<void(host::Reachability)> handler) {
    watchedHost_ = handler ? hostName : std::string();
    reachabilityHandler_ = std::move(handler);
    if (reachabilityHandler_)
        loop_.schedule(0, [this] { setReachability(reachability_); });
}

void ScriptedNetwork::setReachability(host::Reachability reachability) {
    reachability_ = reachability;
    if (reachabilityHandler_)
        reachabilityHandler_(reachability);
}

}
