#pragma once
#include "tests/linux/TestCertificate.h"

#include <libsoup/soup.h>

namespace vistrel {

/// "Basic …" for "name:password", as in an Authorization field.
inline std::string basicCredential(const std::string& login) {
    char* encoded = g_base64_encode(reinterpret_cast<const guchar*>(login.data()), login.size());
    std::string field = std::string("Basic ") + encoded;
    g_free(encoded);
    return field;
}

struct TestPage {
    int status = 200;
    std::string type = "text/html";
    std::string body{};
    std::vector<std::pair<std::string, std::string>> headers{};
    /// "name:password" that the page asks for; empty: nothing.
    std::string login{};
    /// Always sends the whole body.
    bool refusesRanges = false;
    /// Keeps the connection open without an answer.
    bool isSilent = false;
};

/// An HTTP server on loopback for the page engine, on the test's own main loop.
class TestPageServer {
public:
    struct Seen {
        std::string method;
        std::string path;
        std::string cookie;
        std::string userAgent;
        std::string accept;
        std::string authorization;
        std::string body;
    };
    using Page = TestPage;

    TestPageServer() { listen({}); }
    /// Over TLS, with a certificate that nobody trusts.
    explicit TestPageServer(const TestCertificate& certificate)
        : scheme_("https") {
        soup_server_set_tls_certificate(server_, certificate.get().get());
        listen(SOUP_SERVER_LISTEN_HTTPS);
    }
    ~TestPageServer() {
        soup_server_disconnect(server_);
        g_object_unref(server_);
    }
    TestPageServer(const TestPageServer&) = delete;
    TestPageServer& operator=(const TestPageServer&) = delete;

    std::string url(const std::string& path) const {
        return scheme_ + "://127.0.0.1:" + std::to_string(port_) + path;
    }
    void serve(const std::string& path, Page page) { pages_[path] = std::move(page); }
    void servePage(const std::string& path, const std::string& html) {
        pages_[path] = Page{.body = html};
    }
    /// Three seconds of it.
    void serveFilm(const std::string& path, Page page = {}) {
        page.type = "video/mp4";
        page.body = support::contentsOf(SAMPLES_FOLDER "/colours.mp4");
        serve(path, std::move(page));
    }
    void redirect(const std::string& path, const std::string& target, Page page = {}) {
        page.status = 302;
        page.headers.emplace_back("Location", target);
        serve(path, std::move(page));
    }

    /// All requests, in order.
    const std::vector<Seen>& seen() const { return seen_; }
    /// Requests of a path, in order.
    std::vector<Seen> seen(const std::string& path) const {
        std::vector<Seen> result;
        for (const Seen& one : seen_)
            if (one.path == path)
                result.push_back(one);
        return result;
    }

private:
    void listen(SoupServerListenOptions options) {
        soup_server_add_handler(
            server_, nullptr,
            [](SoupServer*, SoupServerMessage* message, const char* path, GHashTable*,
               gpointer self) { static_cast<TestPageServer*>(self)->answer(message, path); },
            this, nullptr);
        soup_server_listen_local(
            server_, 0, SoupServerListenOptions(SOUP_SERVER_LISTEN_IPV4_ONLY | options), nullptr);
        GSList* uris = soup_server_get_uris(server_);
        port_ = g_uri_get_port(static_cast<GUri*>(uris->data));
        g_slist_free_full(uris, reinterpret_cast<GDestroyNotify>(g_uri_unref));
    }
    void answer(SoupServerMessage* message, const char* path) {
        SoupMessageHeaders* request = soup_server_message_get_request_headers(message);
        const auto header = [request](const char* name) {
            const char* value = soup_message_headers_get_list(request, name);
            return std::string(value ? value : "");
        };
        const SoupMessageBody* body = soup_server_message_get_request_body(message);
        seen_.push_back({soup_server_message_get_method(message), path, header("Cookie"),
                         header("User-Agent"), header("Accept"), header("Authorization"),
                         std::string(body->data, static_cast<std::size_t>(body->length))});
        const auto found = pages_.find(path);
        if (found == pages_.end())
            return soup_server_message_set_status(message, 404, nullptr);
        const Page& page = found->second;
        if (page.isSilent)
            return soup_server_message_pause(message);
        SoupMessageHeaders* response = soup_server_message_get_response_headers(message);
        if (!page.login.empty() && seen_.back().authorization != basicCredential(page.login)) {
            soup_message_headers_append(response, "WWW-Authenticate", "Basic realm=\"Members\"");
            return soup_server_message_set_status(message, 401, nullptr);
        }
        for (const auto& [name, value] : page.headers)
            soup_message_headers_append(response, name.c_str(), value.c_str());
        if (page.refusesRanges)
            soup_message_headers_remove(request, "Range");
        soup_server_message_set_status(message, static_cast<guint>(page.status), nullptr);
        soup_server_message_set_response(message, page.type.c_str(), SOUP_MEMORY_COPY,
                                         page.body.data(), page.body.size());
    }

    SoupServer* server_ = soup_server_new(nullptr, nullptr);
    std::string scheme_ = "http";
    int port_ = 0;
    std::map<std::string, Page> pages_;
    std::vector<Seen> seen_;
};

}
