#include "tests/linux/web/TestPageServer.h"

namespace vistrel {

TestPageServer::TestPageServer()
    : server_(soup_server_new(nullptr, nullptr)) {
    listen({});
}

TestPageServer::TestPageServer(const std::string& certificateFile, const std::string& keyFile)
    : server_(soup_server_new(nullptr, nullptr))
    , scheme_("https") {
    GTlsCertificate* certificate =
        g_tls_certificate_new_from_files(certificateFile.c_str(), keyFile.c_str(), nullptr);
    soup_server_set_tls_certificate(server_, certificate);
    g_object_unref(certificate);
    listen(SOUP_SERVER_LISTEN_HTTPS);
}

void TestPageServer::listen(SoupServerListenOptions options) {
    soup_server_add_handler(
        server_, nullptr,
        [](SoupServer*, SoupServerMessage* message, const char* path, GHashTable*, gpointer self) {
            static_cast<TestPageServer*>(self)->answer(message, path);
        },
        this, nullptr);
    soup_server_listen_local(
        server_, 0, SoupServerListenOptions(SOUP_SERVER_LISTEN_IPV4_ONLY | options), nullptr);
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
    return std::string(scheme_) + "://127.0.0.1:" + std::to_string(port_) + path;
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
              {},
              header("Authorization")};
    SoupMessageBody* body = soup_server_message_get_request_body(message);
    seen.body.assign(body->data ? body->data : "", static_cast<std::size_t>(body->length));
    seen_.push_back(seen);

    const auto found = pages_.find(path);
    if (found == pages_.end()) {
        soup_server_message_set_status(message, 404, nullptr);
        return;
    }
    const Page& page = found->second;
    if (page.isSilent) {
        soup_server_message_pause(message);
        return;
    }
    char* login =
        g_base64_encode(reinterpret_cast<const guchar*>(page.login.data()), page.login.size());
    const bool isKnown = page.login.empty() || seen.authorization == std::string("Basic ") + login;
    g_free(login);
    if (!isKnown) {
        soup_message_headers_append(soup_server_message_get_response_headers(message),
                                    "WWW-Authenticate", "Basic realm=\"Members\"");
        soup_server_message_set_status(message, 401, nullptr);
        return;
    }
    SoupMessageHeaders* response = soup_server_message_get_response_headers(message);
    for (const auto& [name, value] : page.headers)
        soup_message_headers_append(response, name.c_str(), value.c_str());
    soup_server_message_set_status(message, static_cast<guint>(page.status), nullptr);
    soup_server_message_set_response(message, page.type.c_str(), SOUP_MEMORY_COPY, page.body.data(),
                                     page.body.size());
}

}
