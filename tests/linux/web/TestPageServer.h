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
        std::string body;
    };
    struct Page {
        int status = 200;
        std::string type = "text/html";
        std::string body;
        std::vector<std::pair<std::string, std::string>> headers;
    };

    TestPageServer();
    ~TestPageServer();
    TestPageServer(const TestPageServer&) = delete;
    TestPageServer& operator=(const TestPageServer&) = delete;

    std::string url(const std::string& path) const;
    void serve(const std::string& path, Page page) { pages_[path] = std::move(page); }
    /// Requests of a path, in order.
    std::vector<Seen> seen(const std::string& path) const;

private:
    void answer(SoupServerMessage* message, const char* path);

    SoupServer* server_;
    guint port_ = 0;
    std::map<std::string, Page> pages_;
    std::vector<Seen> seen_;
};

}
