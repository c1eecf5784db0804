#pragma once
#include <libsoup/soup.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vistrel {

/// An HTTP server on loopback for the page engine, on the test's own main loop.
class TestPageServer {
public:
    struct Seen {
        std::string method;
        std::string path;
        std::string cookie;
        std::string userAgent;
        std::string accept;
        std::string body{};
        std::string authorization;
    };
    struct Page {
        int status = 200;
        std::string type = "text/html";
        std::string body{};
        std::vector<std::pair<std::string, std::string>> headers{};
        /// "name:password" that the page asks for; empty: nothing.
        std::string login{};
        /// Keeps the connection open without an answer.
        bool isSilent = false;
    };

    TestPageServer();
    /// Over TLS, with a certificate that nobody trusts.
    TestPageServer(const std::string& certificateFile, const std::string& keyFile);
    ~TestPageServer();
    TestPageServer(const TestPageServer&) = delete;
    TestPageServer& operator=(const TestPageServer&) = delete;

    std::string url(const std::string& path) const;
    void serve(const std::string& path, Page page) { pages_[path] = std::move(page); }
    /// Requests of a path, in order.
    std::vector<Seen> seen(const std::string& path) const;

    /// All requests, in order.
    const std::vector<Seen>& seen() const { return seen_; }

private:
    void listen(SoupServerListenOptions options);
    void answer(SoupServerMessage* message, const char* path);

    SoupServer* server_;
    const char* scheme_ = "http";
    guint port_ = 0;
    std::map<std::string, Page> pages_;
    std::vector<Seen> seen_;
};

}
