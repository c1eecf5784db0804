#include "demo/Page.h"
#include "demo/Pages.h"

#include <array>

namespace vistrel::demo {
namespace {
struct NamedRedirect {
    std::string_view path;
    int status;
    std::string_view location;
    std::string_view title;
};

constexpr std::array<NamedRedirect, 6> named = {{
    {"/r/loop", 302, "/r/loop", "To itself, forever"},
    {"/r/ping", 302, "/r/pong", "Back and forth forever"},
    {"/r/pong", 302, "/r/ping", "Back and forth forever"},
    {"/r/file", 302, "file:///etc/passwd", "To a file on this machine"},
    {"/r/ftp", 302, "ftp://127.0.0.1/film.mp4", "To another scheme"},
    {"/r/relative", 302, "../files/relative-1.mp4", "To a relative address"},
}};

struct Example {
    std::string_view path;
    std::string_view title;
};

// The address names the redirect: /r/STATUS/REST leads to /REST.
constexpr std::array<Example, 5> formed = {{
    {"/r/301/media/harbour-at-dawn.mp4", "301 to a film"},
    {"/r/302/media/night-tram.m4v", "302 to a film"},
    {"/r/307/media/short-signal.mp3", "307 to a song"},
    {"/r/307/r/307/r/301/r/302/media/paper-boats.mp4", "Chain of four to a film"},
    {"/r/302/music/", "302 to a page"},
}};

bool isRedirect(long long status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}
}

Answer redirectsPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Redirects");
    for (const Address& address : redirectAddresses())
        page.link(address.address, address.title, address.address);
    return page.answer();
}

Answer redirection(Site& /*site*/, const Request& request) {
    for (const NamedRedirect& redirect : named)
        if (request.path == redirect.path)
            return redirectAnswer(std::string(redirect.location), redirect.status);
    constexpr size_t prefix = std::string_view("/r/").size();
    const std::string_view rest = std::string_view(request.rawPath).substr(prefix);
    const size_t slash = rest.find('/');
    const long long status = numberFrom(rest.substr(0, slash), 0);
    if (slash == std::string_view::npos || !isRedirect(status))
        return errorAnswer(404, "No such redirect.");
    std::string location(rest.substr(slash));
    if (!request.rawQuery.empty())
        location += "?" + request.rawQuery;
    return redirectAnswer(location, static_cast<int>(status));
}

Addresses redirectAddresses() {
    Addresses addresses;
    for (const Example& example : formed)
        addresses.push_back({std::string(example.path), std::string(example.title)});
    for (const NamedRedirect& redirect : named)
        addresses.push_back({std::string(redirect.path), std::string(redirect.title)});
    return addresses;
}
}
