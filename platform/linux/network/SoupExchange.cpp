#include "platform/linux/network/SoupExchange.h"

#include "platform/linux/network/HTTPMessage.h"

#include <utility>

namespace vistrel {

namespace {

constexpr std::size_t kChunkSize = std::size_t{128} * 1024;
constexpr int kMostRedirects = 20;
/// The body of a redirect answer up to this size is read to its end, which keeps the connection.
constexpr std::int64_t kSmallBody = std::int64_t{16} * 1024;
/// After input and frames, so that a fast server cannot hold up the screen.
constexpr int kPriority = G_PRIORITY_DEFAULT_IDLE;

bool isHTTP(const std::string& url) {
    return g_ascii_strncasecmp(url.c_str(), "http://", 7) == 0 ||
           g_ascii_strncasecmp(url.c_str(), "https://", 8) == 0;
}

}

struct SoupExchange::Call {
    std::shared_ptr<SoupExchange> exchange;
    Member member;
};

SoupExchange::SoupExchange(SoupSession* session, host::EventLoop& loop,
                           host::TransferRequest request, host::TransferClient& client)
    : session_(NativeReference<SoupSession>::ref(session))
    , loop_(loop)
    , request_(std::move(request))
    , client_(&client)
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new())) {}

SoupExchange::~SoupExchange() = default;

gpointer SoupExchange::callInto(Member member) {
    return new Call{shared_from_this(), member};
}

void SoupExchange::completed(GObject*, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Call> call(static_cast<Call*>(data));
    (call->exchange.get()->*call->member)(result);
}

void SoupExchange::begin() {
    sendHop();
}

void SoupExchange::sendHop() {
    if (!isHTTP(request_.url)) {
        failLater(host::TransferErrorKind::UnsupportedScheme, "unsupported URL");
        return;
    }
    auto message = messageFor(request_);
    if (!message) {
        failLater(host::TransferErrorKind::BadURL, "bad URL");
        return;
    }
    message_ = std::move(*message);
    restartTimeout();
    soup_session_send_async(session_.get(), message_.get(), kPriority, cancellable_.get(),
                            &SoupExchange::completed, callInto(&SoupExchange::headArrived));
}

void SoupExchange::headArrived(GAsyncResult* result) {
    takeHead(result);
    if (!client_)
        dropAnswer(false);
}

void SoupExchange::takeHead(GAsyncResult* result) {
    GError* error = nullptr;
    body_ = NativeReference<GInputStream>::adopt(
        soup_session_send_finish(session_.get(), result, &error));
    const std::unique_ptr<GError, decltype(&g_error_free)> owned(error, g_error_free);
    if (!client_)
        return;
    if (error) {
        failWith(error);
        return;
    }
    restartTimeout();
    if (followRedirect())
        return;
    const auto response = responseOf(message_.get());
    expected_ = response.expectedLength;
    client_->transferDidReceiveResponse(response);
    if (!client_)
        return;
    buffer_ = std::make_unique_for_overwrite<std::byte[]>(kChunkSize);
    readChunk();
}

bool SoupExchange::followRedirect() {
    const auto target = redirectTarget(message_.get());
    if (target && target->empty())
        return false;
    if (!target) {
        fail(host::TransferErrorKind::BadURL, "bad URL");
        return true;
    }
    if (++redirects_ > kMostRedirects) {
        fail(host::TransferErrorKind::TooManyRedirects, "too many HTTP redirects");
        return true;
    }
    const auto response = responseOf(message_.get());
    const bool follows = client_->transferWillRedirect(response, *target);
    if (!client_)
        return true;
    if (!follows) {
        cancel();
        return true;
    }
    if (!isHTTP(*target)) {
        fail(host::TransferErrorKind::UnsupportedScheme, "unsupported URL");
        return true;
    }
    dropAnswer(response.expectedLength >= 0 && response.expectedLength <= kSmallBody);
    request_ =
        requestAfterRedirect(std::move(request_), static_cast<unsigned>(response.status), *target);
    sendHop();
    return true;
}

void SoupExchange::dropAnswer(bool completely) {
    const auto body = std::exchange(body_, {});
    if (!body)
        return;
    // Closing reads what is left, unless it is told not to; then the connection goes, too.
    const auto stop = NativeReference<GCancellable>::adopt(g_cancellable_new());
    if (!completely)
        g_cancellable_cancel(stop.get());
    g_input_stream_close_async(body.get(), kPriority, stop.get(), nullptr, nullptr);
}

void SoupExchange::readChunk() {
    g_input_stream_read_async(body_.get(), buffer_.get(), kChunkSize, kPriority, cancellable_.get(),
                              &SoupExchange::completed, callInto(&SoupExchange::chunkArrived));
}

void SoupExchange::chunkArrived(GAsyncResult* result) {
    takeChunk(result);
    if (!client_)
        dropAnswer(false);
}

void SoupExchange::takeChunk(GAsyncResult* result) {
    GError* error = nullptr;
    const gssize size = g_input_stream_read_finish(body_.get(), result, &error);
    const std::unique_ptr<GError, decltype(&g_error_free)> owned(error, g_error_free);
    if (!client_)
        return;
    if (size < 0) {
        failWith(error);
        return;
    }
    if (size == 0) {
        endOfBody();
        return;
    }
    received_ += size;
    lastByte_ = loop_.now();
    client_->transferDidReceiveData({buffer_.get(), static_cast<std::size_t>(size)});
    if (client_)
        readChunk();
}

void SoupExchange::endOfBody() {
    if (request_.method != "HEAD" && expected_ > received_) {
        fail(host::TransferErrorKind::ConnectionLost, "The network connection was lost.");
        return;
    }
    dropAnswer(true);
    stopTimers();
    std::exchange(client_, nullptr)->transferDidFinish();
}

void SoupExchange::failWith(const GError* error) {
    auto kind = error ? errorKindOf(error) : host::TransferErrorKind::Other;
    // Whatever breaks an answer that had begun is a lost connection.
    if (kind == host::TransferErrorKind::Other && received_ > 0)
        kind = host::TransferErrorKind::ConnectionLost;
    fail(kind, error ? error->message : "The transfer failed.");
}

void SoupExchange::fail(host::TransferErrorKind kind, const std::string& message) {
    const auto self = shared_from_this();
    host::TransferClient* client = client_;
    cancel();
    if (client)
        client->transferDidFail({kind, message});
}

void SoupExchange::failLater(host::TransferErrorKind kind, const std::string& message) {
    failure_ = loop_.schedule(0, [this, kind, message] {
        failure_ = 0;
        fail(kind, message);
    });
}

void SoupExchange::cancel() {
    stopTimers();
    client_ = nullptr;
    g_cancellable_cancel(cancellable_.get());
}

void SoupExchange::restartTimeout() {
    lastByte_ = loop_.now();
    if (timeout_ == 0)
        timeout_ = loop_.schedule(request_.timeout, [this] { timeoutPassed(); });
}

void SoupExchange::timeoutPassed() {
    timeout_ = 0;
    const double left = lastByte_ + request_.timeout - loop_.now();
    if (left > 0) {
        timeout_ = loop_.schedule(left, [this] { timeoutPassed(); });
        return;
    }
    fail(host::TransferErrorKind::TimedOut, "The request timed out.");
}

void SoupExchange::stopTimers() {
    loop_.cancel(std::exchange(timeout_, 0));
    loop_.cancel(std::exchange(failure_, 0));
}

}
