#pragma once
#include "platform/host/Network.h"

#include <curl/curl.h>
#include <glib.h>

#include <memory>
#include <string>

namespace vistrel {

struct HTTPRequestDeleters {
    void operator()(GUri* uri) const { g_uri_unref(uri); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using ParsedURI = std::unique_ptr<GUri, HTTPRequestDeleters>;
using HeaderList = std::unique_ptr<curl_slist, HTTPRequestDeleters>;

[[nodiscard]] bool isHTTP(const std::string& url);
/// Null unless the address is valid and has a host.
[[nodiscard]] ParsedURI parsedURI(const std::string& url);
/// A redirect's Location resolved against `base`; empty when it is malformed.
[[nodiscard]] std::string resolvedURL(GUri* base, const std::string& location);
[[nodiscard]] std::string textOf(GUri* uri);

/// The request's header lines, including the given cookies; fields that contain line breaks are
/// left out.
[[nodiscard]] HeaderList headerLines(const host::TransferRequest& request,
                                     const std::string& cookies);

/// The request for the next hop: the status decides the method, and credentials for the first site
/// are not sent to another one.
[[nodiscard]] host::TransferRequest requestAfterRedirect(host::TransferRequest request, int status,
                                                         const std::string& target);

}
