#pragma once
#include "platform/host/WebEngine.h"

#include <webkit/webkit.h>

#include <string>

namespace vistrel {

/// What the engine's decision objects say, in the host's words.
namespace WebKitPolicy {

/// That of a request which the application makes of itself.
host::WebNavigation navigation(WebKitURIRequest* request);
host::WebNavigation navigation(WebKitNavigationAction* action);
host::WebResponse response(WebKitResponsePolicyDecision* decision);
host::WebError error(const GError& error, const std::string& url);

/// A page may go there: http, https, and what pages make of themselves (about, data, blob). Never
/// to files of this machine.
bool isShowable(const std::string& url);
bool isHTTP(const std::string& url);

}
}
