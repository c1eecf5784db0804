#include "tests/linux/web/TestPageServer.h"

namespace vistrel {

TestPageServer::TestPageServer()
    : server_(soup_server_new(nullptr, nullptr)) {
    soup_server_add_handler(
        server_, nullptr,
        [](SoupServer*, SoupServerMessage* message, const char* path, GHashTable*, gpointer self) {
            static_cast<TestPageServer*>(self)->answer(message, path);
        },
        this, nullptr);
    soup_server_listen_local(server_, 0, SOUP_SERVER_LISTEN_IPV4_ONLY, nullptr);
    GSList* uris = soup_server_get_uris(server_);
    if (uris)
        port_ = static_cast<guint>(g_uri_get_port(static_cast<GUri*>(uris->data)));
    g_slist_free_full(uris, reinterpret_cast<GDestroyNotify>(g_uri_unref));
}

TestPageServer::~TestPageServer() {
    soup_server_disconnect(server_);
    g_object_unref(server_);
}

std::string TestPageServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
}

std::vector<TestPageServer::Seen> TestPageServer::seen(const std::string& path) const {
    std::vector<Seen> result;
    for (const Seen& one : seen_)
        if (one.path == path)
            result.push_back(one);
    return result;
}

void TestPageServer::answer(SoupServerMessage* message, const char* path) {
    SoupMessageHeaders* request = soup_server_message_get_request_headers(message);
    const auto header = [request](const char* name) {
        const char* value = soup_message_headers_get_list(request, name);
        return std::string(value ? value : "");
    };
    Seen seen{soup_server_message_get_method(message),
              path,
              header("Cookie"),
              header("User-Agent"),
              header("Accept"),
              {}};
    SoupMessageBody* body = soup_server_message_get_request_body(message);
    seen.body.assign(body->data ? body->data : "", static_cast<std::size_t>(body->length));
    seen_.push_back(seen);

    const auto found = pages_.find(path);
    if (found == pages_.end()) {
        soup_server_message_set_status(message, 404, nullptr);
        return;
    }
    const Page& page = found->second;
    SoupMessageHeaders* response = soup_server_message_get_response_headers(message);
    for (const auto& [name, value] : page.headers)
        soup_message_headers_append(response, name.c_str(), value.c_str());
    soup_server_message_set_status(message, static_cast<guint>(page.status), nullptr);
    soup_server_message_set_response(message, page.type.c_str(), SOUP_MEMORY_COPY, page.body.data(),
                                     page.body.size());
}

}
