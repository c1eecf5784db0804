#pragma once
#include "tests/linux/LoopbackListener.h"

#include <atomic>

namespace vistrel {

/// A web server on loopback that answers each path with bytes as a test gives them, right or wrong.
class LoopbackServer {
public:
    using Answer = std::function<void(LoopbackConnection&)>;

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(listener_.port()) + path;
    }
    void at(const std::string& path, Answer answer) {
        answers_.change([&](auto& all) { all[path] = std::move(answer); });
    }
    /// Keeps the connection for further requests, unless the path begins with "/last".
    void at(const std::string& path, std::string bytes) {
        at(path, [bytes = std::move(bytes)](const LoopbackConnection& connection) {
            (void)connection.send(bytes);
        });
    }
    /// Heads of the requests so far.
    std::vector<std::string> requests() { return requests_.get(); }
    int connections() const { return connections_; }
    /// Whether the connection that asked for the path has ended.
    bool isClosed(const std::string& path) { return closed_.get().contains(path); }

private:
    void serve(LoopbackConnection& connection) {
        ++connections_;
        std::string path;
        while (const auto request = connection.readLine()) {
            std::string head = *request + "\r\n";
            for (auto line = connection.readLine(); line && !line->empty();
                 line = connection.readLine())
                head += *line + "\r\n";
            const auto start = request->find(' ') + 1;
            path = request->substr(start, request->rfind(' ') - start);
            requests_.change([&](auto& all) { all.push_back(head); });
            const Answer answer = answers_.get()[path];
            if (answer)
                answer(connection);
            if (!answer || path.starts_with("/last"))
                break;
        }
        connection.close();
        closed_.change([&](auto& all) { all.insert(path); });
    }

    Shared<std::map<std::string, Answer>> answers_;
    Shared<std::vector<std::string>> requests_;
    Shared<std::set<std::string>> closed_;
    std::atomic<int> connections_ = 0;
    LoopbackListener listener_{[this](LoopbackConnection& connection) {
        serve(connection);
    }};
};

}
