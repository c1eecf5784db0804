#pragma once
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace vistrel {

/// One accepted connection, as a test's answer sees it. Runs on its own thread.
class LoopbackConnection {
public:
    explicit LoopbackConnection(int socket)
        : socket_(socket) {}

    /// False once the client has gone.
    bool send(const std::string& bytes) const;
    /// Returns when the client has closed the connection.
    void waitForClose() const;

private:
    int socket_;
};

/// A server on 127.0.0.1 that answers each path with bytes as a test gives them, right or wrong.
class LoopbackServer {
public:
    using Answer = std::function<void(const LoopbackConnection&)>;

    LoopbackServer();
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    std::string url(const std::string& path) const;
    /// The connection is kept for further requests when the answer says its length.
    void at(const std::string& path, std::string bytes);
    void at(const std::string& path, Answer answer);

    /// Heads of the requests so far.
    std::vector<std::string> requests();
    int connections();
    /// Whether the connection that asked for the path has ended.
    bool isClosed(const std::string& path);

private:
    void acceptConnections();
    void serve(int socket);
    bool answer(int socket, const std::string& head);

    int listener_ = -1;
    int port_ = 0;
    std::mutex mutex_;
    std::map<std::string, Answer> answers_;
    std::vector<std::string> requests_;
    std::map<std::string, bool> closed_;
    std::vector<int> sockets_;
    std::vector<std::thread> threads_;
    std::thread acceptor_;
    bool stopping_ = false;
};

}
