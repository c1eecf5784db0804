#pragma once
#include "tests/linux/LoopbackListener.h"

#include <mutex>

namespace vistrel {

/// A web server on loopback that answers each path with bytes as a test gives them, right or wrong.
class LoopbackServer {
public:
    using Answer = std::function<void(LoopbackConnection&)>;

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(listener_.port()) + path;
    }
    void at(const std::string& path, Answer answer) {
        const std::lock_guard lock(mutex_);
        answers_.insert_or_assign(path, std::move(answer));
    }
    /// Keeps the connection for further requests, unless the path begins with "/last".
    void at(const std::string& path, std::string bytes) {
        at(path, [bytes = std::move(bytes)](const LoopbackConnection& connection) {
            (void)connection.send(bytes);
        });
    }
    /// Heads of the requests so far.
    std::vector<std::string> requests() {
        const std::lock_guard lock(mutex_);
        return requests_;
    }
    int connections() {
        const std::lock_guard lock(mutex_);
        return connections_;
    }
    /// Whether the connection that asked for the path has ended.
    bool isClosed(const std::string& path) {
        const std::lock_guard lock(mutex_);
        return closed_[path];
    }

private:
    void serve(LoopbackConnection& connection) {
        std::string path;
        {
            const std::lock_guard lock(mutex_);
            ++connections_;
        }
        while (const auto request = connection.readLine()) {
            std::string head = *request + "\r\n";
            for (auto line = connection.readLine(); line && !line->empty();
                 line = connection.readLine())
                head += *line + "\r\n";
            const auto start = request->find(' ') + 1;
            path = request->substr(start, request->rfind(' ') - start);
            Answer answer;
            {
                const std::lock_guard lock(mutex_);
                requests_.push_back(head);
                answer = answers_[path];
            }
            if (answer)
                answer(connection);
            if (!answer || path.starts_with("/last"))
                break;
        }
        connection.close();
        const std::lock_guard lock(mutex_);
        closed_[path] = true;
    }

    std::mutex mutex_;
    std::map<std::string, Answer> answers_;
    std::vector<std::string> requests_;
    std::map<std::string, bool> closed_;
    int connections_ = 0;
    LoopbackListener listener_{[this](LoopbackConnection& connection) {
        serve(connection);
    }};
};

}
