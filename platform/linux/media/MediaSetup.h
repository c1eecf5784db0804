#pragma once
#include <functional>
#include <optional>
#include <string>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library's own name
using SoupCookieJar = struct _SoupCookieJar;

namespace vistrel {
namespace host {
class Media;
}

struct StreamCredential {
    std::string user;
    std::string password;
};

/// What the players' module is given when it is created.
struct MediaSetup {
    /// Cookies for videos that are streamed; may be null, and may give null.
    std::function<SoupCookieJar*()> cookieJar;
    std::string userAgent; ///< for the same; empty: the streaming library's own
    /// The credential that the user has given for the origin of an address, if any.
    std::function<std::optional<StreamCredential>(const std::string& url)> credential;
    /// Follows the redirects of an address; calls `found` on the loop with the address that
    /// answered, or with an empty text.
    std::function<void(const std::string& url, std::function<void(const std::string&)> found)>
        followRedirects;
    /// Where a device path lies on the machine.
    std::function<std::string(const std::string& devicePath)> machinePath;
    std::function<void(const std::string& line)> log;
};

/// The module's one entry point. The caller owns what it returns.
using CreateMedia = host::Media* (*)(const MediaSetup& setup);
inline constexpr const char* kCreateMediaSymbol = "vistrel_create_media";

}
