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

/// The players' module's dependencies.
struct MediaSetup {
    /// Supplies cookies for streamed videos; may be null and may return null.
    std::function<SoupCookieJar*()> cookieJar;
    std::string userAgent; ///< for streamed videos; empty: the streaming library's own
    /// The user's credential for a URL's origin, if any.
    std::function<std::optional<StreamCredential>(const std::string& url)> credential;
    /// Follows the redirects of a URL; calls `found` on the loop with the final URL, or with an
    /// empty text.
    std::function<void(const std::string& url, std::function<void(const std::string&)> found)>
        followRedirects;
    /// Maps a device path to a path on the machine.
    std::function<std::string(const std::string& devicePath)> machinePath;
    std::function<void(const std::string& line)> log;
};

/// The module's only entry point. The caller owns the result.
using CreateMedia = host::Media* (*)(const MediaSetup& setup);
inline constexpr const char* kCreateMediaSymbol = "vistrel_create_media";

}
