#pragma once
#include <functional>
#include <memory>
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

/// The module's one entry point.
using CreateWebEngine = void (*)(const WebEngineSetup& setup,
                                 std::shared_ptr<host::WebEngine>& engine);
inline constexpr const char* kCreateWebEngineSymbol = "vistrel_create_web_engine";

}
