#include "tests/support/ScriptedNetwork.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/host/EventLoop.h"

namespace vistrel::support {

/// One transfer over a scripted network: plays its answer piece by piece on the virtual clock.
class ScriptedTransfer : public host::Transfer {
public:
    ScriptedTransfer(ScriptedNetwork& network, host::TransferRequest request,
                     host::TransferClient& client)
        : network_(network)
        , running_(network.running_)
        , request_(std::move(request))
        , client_(client) {
        ++*running_;
        then(0, &ScriptedTransfer::beginHop);
    }
    ~ScriptedTransfer() override {
        *alive_ = false;
        --*running_;
        stopTimers();
    }
    ScriptedTransfer(const ScriptedTransfer&) = delete;
    ScriptedTransfer& operator=(const ScriptedTransfer&) = delete;

private:
    static constexpr int kMostRedirects = 20;

    void beginHop() {
        if (!request_.url.starts_with("http://") && !request_.url.starts_with("https://")) {
            fail(host::TransferErrorKind::UnsupportedScheme, "unsupported URL");
            return;
        }
        auto answer = network_.take(request_);
        if (!answer) {
            fail(host::TransferErrorKind::CannotConnect, "Could not connect to the server.");
            return;
        }
        answer_ = std::move(*answer);
        delivered_ = 0;
        chunk_ = 0;
        restartTimeout();
        if (!answer_.silent_)
            then(answer_.delay_, &ScriptedTransfer::answerHead);
    }
    void answerHead() {
        if (answer_.failsBeforeHead_) {
            fail(answer_.error_.kind, answer_.error_.message);
            return;
        }
        restartTimeout();
        if (!answer_.location_.empty()) {
            follow();
            return;
        }
        const auto length =
            answer_.announced_.value_or(static_cast<std::int64_t>(answer_.body_.size()));
        const auto alive = alive_;
        client_.transferDidReceiveResponse(
            {request_.url, answer_.status_, answer_.headers_, answer_.mimeType_, length});
        if (*alive)
            then(answer_.interval_, &ScriptedTransfer::deliverChunk);
    }
    void follow() {
        if (++hops_ > kMostRedirects) {
            fail(host::TransferErrorKind::TooManyRedirects, "too many HTTP redirects");
            return;
        }
        const std::string target = answer_.location_;
        const auto alive = alive_;
        const bool follows = client_.transferWillRedirect(
            {request_.url, answer_.status_, answer_.headers_, answer_.mimeType_, -1}, target);
        if (!*alive)
            return;
        if (!follows) {
            stopTimers();
            return;
        }
        request_.url = target;
        if (answer_.status_ == 303 || (request_.method == "POST" && answer_.status_ < 303))
            request_.method = "GET";
        then(0, &ScriptedTransfer::beginHop);
    }
    void deliverChunk() {
        if (answer_.failsAt_ == delivered_) {
            fail(answer_.error_.kind, answer_.error_.message);
            return;
        }
        const std::size_t size = nextChunkSize();
        if (size == 0) {
            endOfBody();
            return;
        }
        const auto bytes = std::as_bytes(std::span(answer_.body_)).subspan(delivered_, size);
        delivered_ += size;
        restartTimeout();
        const auto alive = alive_;
        client_.transferDidReceiveData(bytes);
        if (*alive)
            then(answer_.interval_, &ScriptedTransfer::deliverChunk);
    }
    std::size_t nextChunkSize() {
        const std::size_t left = answer_.body_.size() - delivered_;
        std::size_t size = left;
        if (chunk_ < answer_.chunks_.size())
            size = answer_.chunks_[chunk_];
        else if (answer_.chunks_.empty() && left > 0)
            size = std::uniform_int_distribution<std::size_t>(1, left)(network_.random_);
        if (answer_.failsAt_ && *answer_.failsAt_ >= delivered_)
            size = std::min(size, *answer_.failsAt_ - delivered_);
        ++chunk_;
        return std::min(size, left);
    }
    void endOfBody() {
        stopTimers();
        if (answer_.announced_ && *answer_.announced_ > static_cast<std::int64_t>(delivered_)) {
            fail(host::TransferErrorKind::ConnectionLost, "The network connection was lost.");
            return;
        }
        client_.transferDidFinish();
    }
    void fail(host::TransferErrorKind kind, const std::string& message) {
        stopTimers();
        client_.transferDidFail({kind, message});
    }
    void restartTimeout() {
        network_.loop_.cancel(timeout_);
        timeout_ = network_.loop_.schedule(request_.timeout, [this] {
            timeout_ = 0;
            fail(host::TransferErrorKind::TimedOut, "The request timed out.");
        });
    }
    void then(double delay, void (ScriptedTransfer::*step)()) {
        step_ = network_.loop_.schedule(delay, [this, step] {
            step_ = 0;
            (this->*step)();
        });
    }
    void stopTimers() {
        network_.loop_.cancel(std::exchange(step_, 0));
        network_.loop_.cancel(std::exchange(timeout_, 0));
    }

    ScriptedNetwork& network_;
    std::shared_ptr<int> running_;
    host::TransferRequest request_;
    host::TransferClient& client_;
    ScriptedAnswer answer_;
    int hops_ = 0;
    std::size_t delivered_ = 0;
    std::size_t chunk_ = 0;
    host::EventLoop::Token step_ = 0;
    host::EventLoop::Token timeout_ = 0;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

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
