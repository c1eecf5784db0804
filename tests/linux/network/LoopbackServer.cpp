#include "tests/linux/network/LoopbackServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace vistrel {

bool LoopbackConnection::send(const std::string& bytes) const {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t size =
            ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (size <= 0)
            return false;
        sent += static_cast<std::size_t>(size);
    }
    return true;
}

void LoopbackConnection::waitForClose() const {
    std::array<char, 256> rest{};
    while (::recv(socket_, rest.data(), rest.size(), 0) > 0) {
    }
}

LoopbackServer::LoopbackServer()
    : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::listen(listener_, 64);
    socklen_t size = sizeof address;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { acceptConnections(); });
}

LoopbackServer::~LoopbackServer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        for (const int socket : sockets_)
            ::shutdown(socket, SHUT_RDWR);
    }
    ::shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    for (std::thread& thread : threads_)
        thread.join();
    for (const int socket : sockets_)
        ::close(socket);
    ::close(listener_);
}

std::string LoopbackServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
}

void LoopbackServer::at(const std::string& path, std::string bytes) {
    at(path, [bytes = std::move(bytes)](const LoopbackConnection& connection) {
        (void)connection.send(bytes);
    });
}

void LoopbackServer::at(const std::string& path, Answer answer) {
    const std::lock_guard lock(mutex_);
    answers_.insert_or_assign(path, std::move(answer));
}

std::vector<std::string> LoopbackServer::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

int LoopbackServer::connections() {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(sockets_.size());
}

bool LoopbackServer::isClosed(const std::string& path) {
    const std::lock_guard lock(mutex_);
    return closed_[path];
}

void LoopbackServer::acceptConnections() {
    for (;;) {
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            return;
        const std::lock_guard lock(mutex_);
        if (stopping_) {
            ::close(socket);
            return;
        }
        sockets_.push_back(socket);
        threads_.emplace_back([this, socket] { serve(socket); });
    }
}

void LoopbackServer::serve(int socket) {
    std::string received;
    std::string path;
    std::array<char, 4096> buffer{};
    for (;;) {
        const auto end = received.find("\r\n\r\n");
        if (end != std::string::npos) {
            const std::string head = received.substr(0, end + 4);
            received.erase(0, end + 4);
            const auto start = head.find(' ') + 1;
            path = head.substr(start, head.find(' ', start) - start);
            if (!answer(socket, head))
                break;
            continue;
        }
        const ssize_t size = ::recv(socket, buffer.data(), buffer.size(), 0);
        if (size <= 0)
            break;
        received.append(buffer.data(), static_cast<std::size_t>(size));
    }
    ::shutdown(socket, SHUT_RDWR);
    const std::lock_guard lock(mutex_);
    closed_[path] = true;
}

bool LoopbackServer::answer(int socket, const std::string& head) {
    const auto start = head.find(' ') + 1;
    const std::string path = head.substr(start, head.find(' ', start) - start);
    Answer found;
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(head);
        const auto entry = answers_.find(path);
        if (entry != answers_.end())
            found = entry->second;
    }
    const LoopbackConnection connection(socket);
    if (!found)
        return connection.send("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    found(connection);
    // Answers that end with the connection say so in their head.
    return head.find("X-Last") == std::string::npos && path.find("/last") != 0;
}

}
