#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>

namespace {

/// One client, one command at a time.
class Conversation {
public:
    Conversation(int socket, std::string folder, int& count)
        : socket_(socket)
        , folder_(std::move(folder))
        , count_(count) {}

    void hold() {
        say("220 vistrel-demo-mail");
        while (const auto line = readLine()) {
            const std::string word = line->substr(0, 4);
            if (word == "QUIT") {
                say("221 goodbye");
                return;
            }
            if (word == "DATA") {
                say("354 go on");
                if (!keepMessage())
                    return;
            }
            say("250 ok");
        }
    }

private:
    void say(const std::string& line) const {
        const std::string bytes = line + "\r\n";
        (void)::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }

    std::optional<std::string> readLine() {
        auto end = unread_.find("\r\n");
        while (end == std::string::npos) {
            char buffer[4096];
            const ssize_t count = ::recv(socket_, buffer, sizeof buffer, 0);
            if (count <= 0)
                return std::nullopt;
            unread_.append(buffer, static_cast<std::size_t>(count));
            end = unread_.find("\r\n");
        }
        std::string line = unread_.substr(0, end);
        unread_.erase(0, end + 2);
        return line;
    }

    /// False when the client hangs up before the end; such a mail is not kept.
    bool keepMessage() {
        std::string message;
        while (const auto line = readLine()) {
            if (*line == ".") {
                std::ofstream(folder_ + "/" + std::to_string(++count_) + ".eml") << message;
                return true;
            }
            message += line->starts_with('.') ? line->substr(1) : *line;
            message += "\r\n";
        }
        return false;
    }

    int socket_;
    std::string folder_;
    int& count_;
    std::string unread_;
};

/// Listens on a free port of 127.0.0.1; -1 on failure.
int listenOnLoopback(int& port) {
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    if (listener < 0 || ::bind(listener, plain, size) != 0 || ::listen(listener, 8) != 0 ||
        ::getsockname(listener, plain, &size) != 0)
        return -1;
    port = ntohs(address.sin_port);
    return listener;
}

}

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "Usage: vistrel-demo-mail FOLDER\n"
                     "Takes mail on 127.0.0.1, prints the port, keeps each mail in FOLDER.\n"
                     "Ends with the process that started it.\n";
        return 2;
    }
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    int port = 0;
    const int listener = listenOnLoopback(port);
    if (listener < 0) {
        std::cerr << "vistrel-demo-mail: cannot listen on 127.0.0.1\n";
        return 1;
    }
    std::cout << port << std::endl;
    int count = 0;
    for (int client = 0; (client = ::accept(listener, nullptr, nullptr)) >= 0; ::close(client))
        Conversation(client, argv[1], count).hold();
    return 1;
}
