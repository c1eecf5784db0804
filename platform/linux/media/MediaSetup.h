#pragma once
#include <functional>
#include <string>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library's own name
using SoupCookieJar = struct _SoupCookieJar;

namespace vistrel {
namespace host {
class Media;
}

/// What the players' module is given when it is made.
struct MediaSetup {
    /// Cookies for videos that are streamed; may be null, and may give null.
    std::function<SoupCookieJar*()> cookieJar;
    std::string userAgent; ///< for the same; empty: the streaming library's own
    /// Where a device path lies on the machine.
    std::function<std::string(const std::string& devicePath)> machinePath;
    std::function<void(const std::string& line)> log;
};

/// The module's one entry point. The caller owns what it returns.
using CreateMedia = host::Media* (*)(const MediaSetup& setup);
inline constexpr const char* kCreateMediaSymbol = "vistrel_create_media";

}
