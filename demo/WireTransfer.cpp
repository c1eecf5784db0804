#include "demo/WireTransfer.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <sys/socket.h>

namespace vistrel::demo {
namespace {
constexpr uint64_t forEver = std::numeric_limits<uint64_t>::max();
constexpr unsigned slowStepMilliseconds = 50;
constexpr int writesInARow = 16;

class WireTransfer {
public:
    WireTransfer(GIOStream* stream, GSocket* socket, std::string head, Body body,
                 const Misbehaviour& misbehaviour)
        : stream_(stream)
        , socket_(socket)
        , head_(std::move(head))
        , body_(std::move(body))
        , misbehaviour_(misbehaviour) {}
    WireTransfer(const WireTransfer&) = delete;
    WireTransfer& operator=(const WireTransfer&) = delete;
    ~WireTransfer();

    void start();

private:
    enum class Step { Again, Blocked, Through, Gone };

    uint64_t stopAfter() const;
    std::string_view nextBytes() const;
    Step writeOnce();
    void waitForRoom();
    void waitForSlowStep();
    void waitForGoodbye();
    void end();
    static gboolean onRoom(GSocket* socket, GIOCondition condition, gpointer self);
    static gboolean onSlowStep(gpointer self);
    static gboolean onReadable(GSocket* socket, GIOCondition condition, gpointer self);
    void attach(GSource* source, GSourceFunc callback);

    GIOStream* stream_;
    GSocket* socket_;
    std::string head_;
    Body body_;
    Misbehaviour misbehaviour_;
    uint64_t headSent_ = 0;
    uint64_t bodySent_ = 0;
    uint64_t allowance_ = forEver; ///< body bytes that a slow transfer may still send in this step
};

WireTransfer::~WireTransfer() {
    if (misbehaviour_.reset) {
        const linger now{1, 0};
        setsockopt(g_socket_get_fd(socket_), SOL_SOCKET, SO_LINGER, &now, sizeof now);
        g_socket_close(socket_, nullptr);
    } else {
        g_socket_shutdown(socket_, FALSE, TRUE, nullptr);
    }
    g_object_unref(socket_);
    g_object_unref(stream_);
}

uint64_t WireTransfer::stopAfter() const {
    return std::min({body_.size() + misbehaviour_.more, misbehaviour_.stall.value_or(forEver),
                     misbehaviour_.truncate.value_or(forEver),
                     misbehaviour_.reset.value_or(forEver)});
}

std::string_view WireTransfer::nextBytes() const {
    if (headSent_ < head_.size())
        return std::string_view(head_).substr(headSent_);
    static const Body excess = Body::pattern(forEver / 2);
    const std::string_view bytes =
        bodySent_ < body_.size() ? body_.at(bodySent_) : excess.at(bodySent_ - body_.size());
    return bytes.substr(0, std::min(stopAfter() - bodySent_, allowance_));
}

WireTransfer::Step WireTransfer::writeOnce() {
    const std::string_view bytes = nextBytes();
    if (bytes.empty())
        return allowance_ == 0 && bodySent_ < stopAfter() ? Step::Blocked : Step::Through;
    const ssize_t written =
        send(g_socket_get_fd(socket_), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (written < 0)
        return errno == EAGAIN || errno == EINTR ? Step::Blocked : Step::Gone;
    const auto count = static_cast<uint64_t>(written);
    if (headSent_ < head_.size()) {
        headSent_ += count;
    } else {
        bodySent_ += count;
        if (allowance_ != forEver)
            allowance_ -= count;
    }
    return Step::Again;
}

void WireTransfer::start() {
    if (misbehaviour_.slow)
        allowance_ = 0;
    waitForRoom();
}

void WireTransfer::attach(GSource* source, GSourceFunc callback) {
    g_source_set_callback(source, callback, this, nullptr);
    g_source_attach(source, nullptr);
    g_source_unref(source);
}

void WireTransfer::waitForRoom() {
    GSource* source = g_socket_create_source(socket_, G_IO_OUT, nullptr);
    attach(source, reinterpret_cast<GSourceFunc>(reinterpret_cast<void (*)()>(onRoom)));
}

void WireTransfer::waitForSlowStep() {
    attach(g_timeout_source_new(slowStepMilliseconds), onSlowStep);
}

void WireTransfer::waitForGoodbye() {
    GSource* source = g_socket_create_source(socket_, G_IO_IN, nullptr);
    attach(source, reinterpret_cast<GSourceFunc>(reinterpret_cast<void (*)()>(onReadable)));
}

void WireTransfer::end() {
    const bool stalls = misbehaviour_.stall && bodySent_ == *misbehaviour_.stall;
    if (stalls)
        waitForGoodbye();
    else
        delete this;
}

gboolean WireTransfer::onRoom(GSocket* /*socket*/, GIOCondition /*condition*/, gpointer self) {
    auto* transfer = static_cast<WireTransfer*>(self);
    for (int count = 0; count < writesInARow; ++count) {
        const Step step = transfer->writeOnce();
        if (step == Step::Again)
            continue;
        if (step == Step::Blocked && transfer->allowance_ != 0)
            return G_SOURCE_CONTINUE;
        if (step == Step::Blocked)
            transfer->waitForSlowStep();
        else if (step == Step::Through)
            transfer->end();
        else
            delete transfer;
        return G_SOURCE_REMOVE;
    }
    return G_SOURCE_CONTINUE;
}

gboolean WireTransfer::onSlowStep(gpointer self) {
    auto* transfer = static_cast<WireTransfer*>(self);
    const uint64_t perSecond = *transfer->misbehaviour_.slow * 1024;
    transfer->allowance_ = std::max<uint64_t>(1, perSecond * slowStepMilliseconds / 1000);
    transfer->waitForRoom();
    return G_SOURCE_REMOVE;
}

gboolean WireTransfer::onReadable(GSocket* /*socket*/, GIOCondition /*condition*/, gpointer self) {
    auto* transfer = static_cast<WireTransfer*>(self);
    char ignored[1024];
    const ssize_t count =
        recv(g_socket_get_fd(transfer->socket_), ignored, sizeof ignored, MSG_DONTWAIT);
    if (count > 0 || (count < 0 && errno == EAGAIN))
        return G_SOURCE_CONTINUE;
    delete transfer;
    return G_SOURCE_REMOVE;
}
}

std::string wireHead(const Answer& answer, const Misbehaviour& misbehaviour) {
    std::string head = "HTTP/1.1 " + std::to_string(answer.status) + " " +
                       std::string(reasonPhrase(answer.status)) + "\r\n";
    head += "Content-Type: " + answer.type + "\r\n";
    for (const auto& [name, value] : answer.headers)
        head.append(name).append(": ").append(value).append("\r\n");
    if (!misbehaviour.noLength) {
        const auto size = static_cast<int64_t>(answer.body.size());
        const int64_t announced = std::max<int64_t>(0, size + misbehaviour.wrongLength.value_or(0));
        head += "Content-Length: " + std::to_string(announced) + "\r\n";
    }
    return head + "Connection: close\r\n\r\n";
}

void startWireTransfer(GIOStream* stream, GSocket* socket, const Answer& answer,
                       const Misbehaviour& misbehaviour, bool headersOnly) {
    auto* transfer = new WireTransfer(stream, socket, wireHead(answer, misbehaviour),
                                      headersOnly ? Body() : answer.body, misbehaviour);
    transfer->start();
}
}
