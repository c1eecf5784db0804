#include "bench/support/FileServer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <thread>

namespace bench {

namespace {

std::string headOf(int socket) {
    std::string head;
    std::array<char, 4096> buffer{};
    while (head.find("\r\n\r\n") == std::string::npos) {
        const ssize_t size = recv(socket, buffer.data(), buffer.size(), 0);
        if (size <= 0)
            return {};
        head.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return head;
}

void answer(int socket, int file) {
    struct stat attributes {};
    fstat(file, &attributes);
    for (std::string head = headOf(socket); !head.empty(); head = headOf(socket)) {
        off_t size = attributes.st_size;
        const auto asked = head.find("?mb=");
        if (asked != std::string::npos)
            size = std::min(size, static_cast<off_t>(std::atoll(&head[asked + 4])) << 20);
        const std::string answerHead = "HTTP/1.1 200 OK\r\nContent-Type: video/mp4\r\n"
                                       "Content-Length: " +
                                       std::to_string(size) + "\r\n\r\n";
        (void)send(socket, answerHead.data(), answerHead.size(), MSG_NOSIGNAL);
        off_t position = 0;
        while (position < size)
            if (sendfile(socket, file, &position, static_cast<std::size_t>(size - position)) <= 0)
                break;
    }
    close(socket);
}

[[noreturn]] void serve(int listener, int file) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    signal(SIGPIPE, SIG_IGN);
    for (;;) {
        const int socket = accept(listener, nullptr, nullptr);
        if (socket >= 0)
            std::thread([socket, file] { answer(socket, file); }).detach();
    }
}

}

FileServer::FileServer(const std::string& file) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
    listen(listener, 16);
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    const int opened = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    process_ = fork();
    if (process_ == 0)
        serve(listener, opened);
    close(listener);
    close(opened);
}

FileServer::~FileServer() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

std::string FileServer::url() const {
    return "http://127.0.0.1:" + std::to_string(port_) + "/big";
}

}
