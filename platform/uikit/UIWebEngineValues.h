#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/host/WebEngine.h"
#include "platform/uikit/UIWebViewDelegate.h"

#include <optional>
#include <string>

namespace vistrel {

/// Page engines accept characters in an address that RFC 3986 does not, and a "%" that begins no
/// escape: these get escaped.
std::optional<NSURL> addressOf(const std::string& text);
UIWebViewNavigationType navigationTypeOf(host::WebNavigationType type);
/// Of unknown length when the server gives none, or the one of a compressed body.
NSURLResponse responseOf(const NSURL& url, const host::WebResponse& answer);

}
