#include "demo/Exchange.h"

#include "demo/Compression.h"
#include "demo/Ranges.h"
#include "demo/Routes.h"
#include "demo/WireTransfer.h"

namespace vistrel::demo {
namespace {
constexpr uint64_t largestKeptInMemory = 64ULL * 1024 * 1024;

GBytes* bytesOf(const Body& body) {
    auto* kept = new Body(body);
    const std::string_view bytes = kept->at(0);
    if (bytes.size() == kept->size())
        return g_bytes_new_with_free_func(
            bytes.data(), bytes.size(), [](gpointer owner) { delete static_cast<Body*>(owner); },
            kept);
    const std::string copy = kept->text();
    delete kept;
    return g_bytes_new(copy.data(), copy.size());
}

Answer answerFor(Site& site, const Request& request) {
    const Route* route = routeFor(request);
    return route == nullptr ? errorAnswer(404, "No such page on this site.")
                            : route->answer(site, request);
}
}

Request requestFrom(SoupServerMessage* message) {
    Request request;
    request.method = soup_server_message_get_method(message);
    GUri* address = soup_server_message_get_uri(message);
    request.rawPath = g_uri_get_path(address);
    request.path = unescaped(request.rawPath);
    if (const char* query = g_uri_get_query(address))
        request.rawQuery = query;
    request.query = formFields(request.rawQuery);
    soup_message_headers_foreach(
        soup_server_message_get_request_headers(message),
        [](const char* name, const char* value, gpointer headers) {
            static_cast<HeaderLines*>(headers)->emplace_back(name, value);
        },
        &request.headers);
    if (request.method == "POST") {
        GBytes* bytes = soup_message_body_flatten(soup_server_message_get_request_body(message));
        gsize size = 0;
        const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
        request.form = formFields(std::string_view(data, size));
        g_bytes_unref(bytes);
    }
    return request;
}

void Exchange::start(SoupServerMessage* message, Request request, Site& site) {
    auto* exchange = new Exchange(message, std::move(request), site);
    const Route* route = routeFor(exchange->request_);
    const double delay = exchange->misbehaviour_.delay;
    if (delay > 0) {
        soup_server_message_pause(message);
        exchange->delayTimer_ =
            g_timeout_add(static_cast<guint>(delay * 1000), onDelayOver, exchange);
    } else if (route != nullptr && route->isLong) {
        soup_server_message_pause(message);
        exchange->answerOnThread();
    } else {
        exchange->answer();
    }
}

Exchange::Exchange(SoupServerMessage* message, Request request, Site& site)
    : message_(SOUP_SERVER_MESSAGE(g_object_ref(message)))
    , request_(std::move(request))
    , site_(site)
    , misbehaviour_(misbehaviourOf(request_)) {
    goneHandler_ = g_signal_connect(message_, "finished", G_CALLBACK(onGone), this);
}

Exchange::~Exchange() {
    if (delayTimer_ != 0)
        g_source_remove(delayTimer_);
    g_signal_handler_disconnect(message_, goneHandler_);
    g_object_unref(message_);
}

gboolean Exchange::onDelayOver(gpointer self) {
    auto* exchange = static_cast<Exchange*>(self);
    exchange->delayTimer_ = 0;
    soup_server_message_unpause(exchange->message_);
    exchange->answer();
    return G_SOURCE_REMOVE;
}

// The client hung up before its response was ready.
void Exchange::onGone(SoupServerMessage* /*message*/, gpointer self) {
    auto* exchange = static_cast<Exchange*>(self);
    exchange->gone_ = true;
    if (!exchange->onThread_)
        delete exchange;
}

void Exchange::answerOnThread() {
    onThread_ = true;
    GTask* task = g_task_new(nullptr, nullptr, onComputed, this);
    g_task_set_task_data(task, this, nullptr);
    g_task_run_in_thread(task, computeOnThread);
    g_object_unref(task);
}

void Exchange::computeOnThread(GTask* task, gpointer /*source*/, gpointer self,
                               GCancellable* /*stop*/) {
    auto* exchange = static_cast<Exchange*>(self);
    exchange->computed_ = answerFor(exchange->site_, exchange->request_);
    g_task_return_boolean(task, TRUE);
}

void Exchange::onComputed(GObject* /*source*/, GAsyncResult* /*result*/, gpointer self) {
    auto* exchange = static_cast<Exchange*>(self);
    if (exchange->gone_) {
        delete exchange;
        return;
    }
    soup_server_message_unpause(exchange->message_);
    exchange->deliver(std::move(exchange->computed_));
}

void Exchange::answer() {
    deliver(answerFor(site_, request_));
}

void Exchange::deliver(Answer answer) {
    if (misbehaviour_.status)
        answer = errorAnswer(*misbehaviour_.status, "As requested.");
    if (misbehaviour_.gzip && answer.body.size() <= largestKeptInMemory) {
        answer.body = gzipped(answer.body);
        answer.headers.emplace_back("Content-Encoding", "gzip");
    } else {
        applyConditionsAndRange(request_, answer);
    }
    if (misbehaviour_.needsOwnWire() || answer.exactHeaders ||
        answer.body.size() > largestKeptInMemory)
        deliverOnTheWire(answer);
    else
        deliverWell(answer);
    delete this;
}

void Exchange::deliverWell(const Answer& answer) {
    const std::string reason(reasonPhrase(answer.status));
    soup_server_message_set_status(message_, static_cast<guint>(answer.status), reason.c_str());
    SoupMessageHeaders* headers = soup_server_message_get_response_headers(message_);
    for (const auto& [name, value] : answer.headers)
        soup_message_headers_append(headers, name.c_str(), value.c_str());
    soup_message_headers_replace(headers, "Content-Type", answer.type.c_str());
    soup_message_headers_set_encoding(
        headers, misbehaviour_.chunked ? SOUP_ENCODING_CHUNKED : SOUP_ENCODING_CONTENT_LENGTH);
    SoupMessageBody* body = soup_server_message_get_response_body(message_);
    if (answer.body.size() > 0) {
        GBytes* bytes = bytesOf(answer.body);
        soup_message_body_append_bytes(body, bytes);
        g_bytes_unref(bytes);
    }
    soup_message_body_complete(body);
}

void Exchange::deliverOnTheWire(const Answer& answer) {
    GSocket* socket = G_SOCKET(g_object_ref(soup_server_message_get_socket(message_)));
    GIOStream* stream = soup_server_message_steal_connection(message_);
    startWireTransfer(stream, socket, answer, misbehaviour_, request_.method == "HEAD");
}
}
