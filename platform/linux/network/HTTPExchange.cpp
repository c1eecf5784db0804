#include "platform/linux/network/HTTPExchange.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/Weakly.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/network/HTTPErrors.h"

#include <utility>

namespace vistrel {

namespace {

/// How much is read and delivered at a time. Larger pieces fall out of the processor's cache in
/// between; smaller ones cost more calls.
constexpr std::size_t kPieceSize = std::size_t{256} * 1024;
constexpr int kMostRedirects = 20;

}

HTTPExchange::HTTPExchange(std::shared_ptr<CurlLoop> curl, host::EventLoop& loop,
                           host::TransferRequest request, host::TransferClient& client)
    : CurlTransfer(std::move(curl))
    , loop_(loop)
    , request_(std::move(request))
    , client_(&client)
    , cookies_(request_.cookies, request_.mainDocumentURL)
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new())) {}

HTTPExchange::~HTTPExchange() {
    cancel();
}

void HTTPExchange::begin() {
    sendHop();
}

void HTTPExchange::sendHop() {
    if (!isHTTP(request_.url)) {
        failLater({host::TransferErrorKind::UnsupportedScheme, "unsupported URL"});
        return;
    }
    uri_ = parsedURI(request_.url);
    if (!uri_) {
        failLater({host::TransferErrorKind::BadURL, "bad URL"});
        return;
    }
    restartTimeout();
    callAsync(weakly(this, &HTTPExchange::proxiesFound), g_proxy_resolver_lookup_async,
              g_proxy_resolver_get_default(), request_.url.c_str(), cancellable_.get());
}

void HTTPExchange::proxiesFound(GAsyncResult* result) {
    char** proxies =
        g_proxy_resolver_lookup_finish(g_proxy_resolver_get_default(), result, nullptr);
    std::string proxy = proxies && *proxies ? *proxies : "";
    g_strfreev(proxies);
    if (proxy == "direct://")
        proxy.clear();
    // The desktop's name for a proxy that also resolves host names.
    else if (proxy.starts_with("socks://"))
        proxy.replace(0, 5, "socks5h");
    if (client_)
        send(proxy);
}

void HTTPExchange::send(const std::string& proxy) {
    reset();
    headers_ = headerLines(request_, cookies_.fieldFor(uri_.get()));
    curl_easy_setopt(handle(), CURLOPT_URL, textOf(uri_.get()).c_str());
    curl_easy_setopt(handle(), CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle(), CURLOPT_PROXY, proxy.c_str());
    curl_easy_setopt(handle(), CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(handle(), CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_2TLS);
    if (request_.method == "HEAD")
        curl_easy_setopt(handle(), CURLOPT_NOBODY, 1L);
    else if (request_.method != "GET")
        curl_easy_setopt(handle(), CURLOPT_CUSTOMREQUEST, request_.method.c_str());
    curl_easy_setopt(handle(), CURLOPT_HTTPHEADER, headers_.get());
    curl_easy_setopt(handle(), CURLOPT_BUFFERSIZE, static_cast<long>(kPieceSize));
    curl_easy_setopt(handle(), CURLOPT_HEADERFUNCTION, &HTTPExchange::takeHeaderLine);
    curl_easy_setopt(handle(), CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle(), CURLOPT_WRITEFUNCTION, &HTTPExchange::takeBody);
    curl_easy_setopt(handle(), CURLOPT_WRITEDATA, this);
    start();
}

std::size_t HTTPExchange::takeHeaderLine(char* bytes, std::size_t size, std::size_t count,
                                         void* data) {
    auto* self = static_cast<HTTPExchange*>(data);
    self->restartTimeout();
    if (!self->head_.take({bytes, size * count})) {
        self->headIsTooLong_ = true;
        return CURL_WRITEFUNC_ERROR;
    }
    if (self->head_.isComplete())
        self->wake();
    return size * count;
}

std::size_t HTTPExchange::takeBody(char* bytes, std::size_t size, std::size_t count, void* data) {
    auto* self = static_cast<HTTPExchange*>(data);
    self->restartTimeout();
    auto& received = self->received_;
    received.reserve(kPieceSize);
    if (received.size() + size * count > kPieceSize) {
        self->paused_ = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    const auto* begin = reinterpret_cast<const std::byte*>(bytes);
    received.insert(received.end(), begin, begin + size * count);
    self->wake();
    return size * count;
}

void HTTPExchange::progressed() {
    if (!client_ || !head_.isComplete())
        return;
    if (!answered_) {
        takeCookies();
        if (const auto location = head_.location()) {
            follow(*location);
            return;
        }
        announce();
    }
    if (client_)
        deliver();
}

void HTTPExchange::takeCookies() {
    for (const std::string& field : valuesOfHeaderField(head_.fields(), "Set-Cookie"))
        cookies_.take(uri_.get(), field);
}

host::TransferResponse HTTPExchange::response() const {
    curl_off_t length = -1;
    curl_easy_getinfo(handle(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    return {textOf(uri_.get()), head_.status(), head_.fields(), head_.mimeType(),
            decoder_ ? -1 : length};
}

void HTTPExchange::follow(const std::string& location) {
    const std::string target = resolvedURL(uri_.get(), location);
    if (target.empty()) {
        fail({host::TransferErrorKind::BadURL, "bad URL"});
        return;
    }
    if (++redirects_ > kMostRedirects) {
        fail({host::TransferErrorKind::TooManyRedirects, "too many HTTP redirects"});
        return;
    }
    const bool follows = client_->transferWillRedirect(response(), target);
    if (!client_)
        return;
    if (!follows) {
        cancel();
        return;
    }
    // The connection is reused if the body arrived together with the head.
    stop();
    received_.clear();
    request_ = requestAfterRedirect(std::move(request_), head_.status(), target);
    head_ = {};
    sendHop();
}

void HTTPExchange::announce() {
    answered_ = true;
    decoder_ = BodyDecoder::forCoding(head_.field("Content-Encoding"));
    const auto answer = response();
    curl_easy_getinfo(handle(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &expected_);
    client_->transferDidReceiveResponse(answer);
}

void HTTPExchange::deliver() {
    if (decoder_ && !received_.empty()) {
        deliverDecoded();
    } else if (!received_.empty()) {
        client_->transferDidReceiveData(received_);
        received_.clear();
    }
    if (!client_ || !received_.empty())
        return;
    if (result_)
        finish();
    else
        resumeReading();
}

void HTTPExchange::deliverDecoded() {
    std::vector<std::byte> output(kPieceSize);
    const auto step = decoder_->decode(std::span(received_).subspan(decodedBytes_), output);
    decodedBytes_ += step.read;
    if (step.written > 0)
        client_->transferDidReceiveData(std::span(output).first(step.written));
    if (!client_)
        return;
    switch (step.state) {
    case BodyDecoder::State::MoreOutput:
        restartTimeout();
        wake(); // the rest is decoded in a later turn of the loop
        break;
    case BodyDecoder::State::MoreInput:
        received_.clear();
        decodedBytes_ = 0;
        break;
    case BodyDecoder::State::Damaged:
        fail({host::TransferErrorKind::Other, "The server's response is corrupted."});
        break;
    case BodyDecoder::State::Bomb:
        fail({host::TransferErrorKind::Other,
              "The server's response is suspiciously large when decompressed."});
        break;
    }
}

void HTTPExchange::resumeReading() {
    if (std::exchange(paused_, false))
        curl_easy_pause(handle(), CURLPAUSE_CONT);
}

void HTTPExchange::ended(CURLcode result) {
    result_ = result;
    if (client_ && (received_.empty() || result != CURLE_OK))
        finish();
}

bool HTTPExchange::bodyIsWhole() const {
    if (!head_.isComplete())
        return false;
    const bool hasBody = request_.method != "HEAD" && head_.status() != 204 &&
                         head_.status() != 304 && expected_ != 0;
    return !decoder_ || !hasBody || decoder_->isComplete();
}

void HTTPExchange::finish() {
    if (headIsTooLong_) {
        fail({host::TransferErrorKind::Other, "The server's response headers are too long."});
    } else if (*result_ != CURLE_OK) {
        fail(transferErrorOf(*result_, errorText()));
    } else if (!bodyIsWhole()) {
        fail(transferErrorOf(CURLE_PARTIAL_FILE, {}));
    } else {
        stopTimers();
        std::exchange(client_, nullptr)->transferDidFinish();
    }
}

void HTTPExchange::fail(const host::TransferError& error) {
    host::TransferClient* client = client_;
    cancel();
    if (client)
        client->transferDidFail(error);
}

void HTTPExchange::failLater(host::TransferError error) {
    failure_ = loop_.schedule(0, weakly(
                                     this,
                                     [error = std::move(error)](HTTPExchange& self) {
                                         self.failure_ = 0;
                                         self.fail(error);
                                     }));
}

void HTTPExchange::cancel() {
    stopTimers();
    client_ = nullptr;
    g_cancellable_cancel(cancellable_.get());
    stop();
}

void HTTPExchange::restartTimeout() {
    lastByte_ = loop_.now();
    if (timeout_ == 0)
        timeout_ = loop_.schedule(request_.timeout, weakly(this, &HTTPExchange::timeoutPassed));
}

void HTTPExchange::timeoutPassed() {
    timeout_ = 0;
    const double left = lastByte_ + request_.timeout - loop_.now();
    if (left > 0)
        timeout_ = loop_.schedule(left, weakly(this, &HTTPExchange::timeoutPassed));
    else
        fail({host::TransferErrorKind::TimedOut, "The request timed out."});
}

void HTTPExchange::stopTimers() {
    loop_.cancel(std::exchange(timeout_, 0));
    loop_.cancel(std::exchange(failure_, 0));
}

}
