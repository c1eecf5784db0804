#pragma once
#include "platform/host/WebEngine.h"

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace vistrel {

/// The engine's decision objects in the host's terms.
namespace WebKitPolicy {

inline constexpr int kErrorCancelled = -999; ///< in NSURLErrorDomain

/// Of a request that the application makes.
host::WebNavigation navigation(WebKitURIRequest* request);
host::WebNavigation navigation(WebKitNavigationAction* action);
host::WebResponse response(WebKitResponsePolicyDecision* decision);
/// Nothing for what no name and password can answer: proxies, client certificates.
std::optional<host::WebChallenge> challenge(WebKitAuthenticationRequest* request);
host::WebError error(const GError& error, const std::string& url);

/// A page may go there: http, https, and what pages make themselves (about, data, blob). Never to
/// files of this machine.
bool isShowable(const std::string& url);
bool isHTTP(const std::string& url);

}
}
