#pragma once
#include <functional>
#include <string>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library's own name
using SoupCookieJar = struct _SoupCookieJar;

namespace vistrel {
namespace host {
class WebEngine;
}

/// What the page engine's module is given when it is made.
struct WebEngineSetup {
    std::string dataDirectory;  ///< machine path; cookies and site data
    std::string cacheDirectory; ///< machine path
    /// The application's cookies, kept equal to the engine's; may be null, and may give null.
    std::function<SoupCookieJar*()> cookieJar;
    std::function<void(const std::string& line)> log;
};

/// The module's one entry point. The caller owns the engine.
using CreateWebEngine = host::WebEngine* (*)(const WebEngineSetup& setup);
inline constexpr const char* kCreateWebEngineSymbol = "vistrel_create_web_engine";

}
