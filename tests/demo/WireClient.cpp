#include "tests/demo/WireClient.h"

#include "tests/demo/DemoSiteProcess.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vistrel::demo {
namespace {
int connectTo(int port) {
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
        return descriptor;
    close(descriptor);
    return -1;
}

std::string readToEnd(int descriptor, Reply::End& end) {
    std::string all;
    std::array<char, 65536> buffer{};
    while (true) {
        const ssize_t count = recv(descriptor, buffer.data(), buffer.size(), 0);
        if (count > 0) {
            all.append(buffer.data(), static_cast<size_t>(count));
            continue;
        }
        end = count == 0        ? Reply::End::Closed
              : errno == EAGAIN ? Reply::End::Silence
                                : Reply::End::Reset;
        return all;
    }
}
}

std::string Reply::header(std::string_view name) const {
    const size_t at = head.find("\r\n" + std::string(name) + ": ");
    if (at == std::string::npos)
        return {};
    const size_t start = at + name.size() + 4;
    return head.substr(start, head.find("\r\n", start) - start);
}

Reply ask(const Query& query) {
    Reply reply;
    const int descriptor = connectTo(sharedSite().port());
    if (descriptor < 0)
        return reply;
    const timeval patience{query.silenceMilliseconds / 1000,
                           query.silenceMilliseconds % 1000 * 1000L};
    setsockopt(descriptor, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    const std::string request = "GET " + query.address +
                                " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n" +
                                query.headers + "\r\n";
    send(descriptor, request.data(), request.size(), MSG_NOSIGNAL);
    const std::string all = readToEnd(descriptor, reply.end);
    close(descriptor);
    const size_t gap = all.find("\r\n\r\n");
    reply.head = all.substr(0, gap == std::string::npos ? gap : gap + 2);
    reply.body = gap == std::string::npos ? "" : all.substr(gap + 4);
    reply.status = all.size() > 12 ? std::atoi(all.c_str() + 9) : 0;
    return reply;
}

Reply ask(const std::string& address) {
    return ask(Query{.address = address});
}
}
