#include "platform/linux/web/WebKitPolicy.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

/// NSURLErrorDomain's numbers.
constexpr int kErrorUnknown = -1;
constexpr int kErrorUnsupportedURL = -1002;
constexpr int kErrorCannotConnect = -1004;
constexpr int kErrorSecureConnection = -1200;

host::HeaderFields fields(SoupMessageHeaders* headers) {
    host::HeaderFields result;
    if (!headers)
        return result;
    SoupMessageHeadersIter iterator;
    const char* name = nullptr;
    const char* value = nullptr;
    soup_message_headers_iter_init(&iterator, headers);
    while (soup_message_headers_iter_next(&iterator, &name, &value))
        result.emplace_back(name, value);
    return result;
}

std::string orEmpty(const char* text) {
    return text ? text : "";
}

std::string schemeOf(const std::string& url) {
    std::string scheme = url.substr(0, url.find(':'));
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](char c) { return g_ascii_tolower(c); });
    return scheme;
}

/// The type as the server wrote it, without parameters; the engine's guess when it wrote none.
std::string mimeType(WebKitURIResponse* response) {
    SoupMessageHeaders* headers = webkit_uri_response_get_http_headers(response);
    const char* sent = headers ? soup_message_headers_get_one(headers, "Content-Type") : nullptr;
    if (!sent)
        return orEmpty(webkit_uri_response_get_mime_type(response));
    std::string_view type(sent);
    type = type.substr(0, type.find(';'));
    while (!type.empty() && g_ascii_isspace(type.back()))
        type.remove_suffix(1);
    while (!type.empty() && g_ascii_isspace(type.front()))
        type.remove_prefix(1);
    return std::string(type);
}

host::WebNavigationType navigationType(WebKitNavigationType type) {
    switch (type) {
    case WEBKIT_NAVIGATION_TYPE_LINK_CLICKED:
        return host::WebNavigationType::LinkClicked;
    case WEBKIT_NAVIGATION_TYPE_FORM_SUBMITTED:
        return host::WebNavigationType::FormSubmitted;
    case WEBKIT_NAVIGATION_TYPE_BACK_FORWARD:
        return host::WebNavigationType::BackForward;
    case WEBKIT_NAVIGATION_TYPE_RELOAD:
        return host::WebNavigationType::Reload;
    case WEBKIT_NAVIGATION_TYPE_FORM_RESUBMITTED:
        return host::WebNavigationType::FormResubmitted;
    case WEBKIT_NAVIGATION_TYPE_OTHER:
        break;
    }
    return host::WebNavigationType::Other;
}

int errorCode(const GError& error) {
    if (error.domain == WEBKIT_NETWORK_ERROR && error.code == WEBKIT_NETWORK_ERROR_CANCELLED)
        return WebKitPolicy::kErrorCancelled;
    if (error.domain == WEBKIT_NETWORK_ERROR && error.code == WEBKIT_NETWORK_ERROR_UNKNOWN_PROTOCOL)
        return kErrorUnsupportedURL;
    if (error.domain == WEBKIT_POLICY_ERROR)
        return error.code;
    if (error.domain == G_TLS_ERROR)
        return kErrorSecureConnection;
    if (error.domain == G_RESOLVER_ERROR || error.domain == G_IO_ERROR)
        return kErrorCannotConnect;
    return kErrorUnknown;
}

}

host::WebNavigation WebKitPolicy::navigation(WebKitURIRequest* request) {
    host::WebNavigation result;
    result.url = orEmpty(webkit_uri_request_get_uri(request));
    if (const char* method = webkit_uri_request_get_http_method(request))
        result.method = method;
    result.headers = fields(webkit_uri_request_get_http_headers(request));
    return result;
}

host::WebNavigation WebKitPolicy::navigation(WebKitNavigationAction* action) {
    host::WebNavigation result = navigation(webkit_navigation_action_get_request(action));
    result.type = navigationType(webkit_navigation_action_get_navigation_type(action));
    result.isRedirect = webkit_navigation_action_is_redirect(action);
    return result;
}

host::WebResponse WebKitPolicy::response(WebKitResponsePolicyDecision* decision) {
    host::WebResponse result;
    WebKitURIResponse* response = webkit_response_policy_decision_get_response(decision);
    result.url = orEmpty(webkit_uri_response_get_uri(response));
    result.mimeType = mimeType(response);
    result.status = static_cast<int>(webkit_uri_response_get_status_code(response));
    result.headers = fields(webkit_uri_response_get_http_headers(response));
    result.isMainFrame = webkit_response_policy_decision_is_main_frame_main_resource(decision);
    WebKitURIRequest* request = webkit_response_policy_decision_get_request(decision);
    if (const char* method = webkit_uri_request_get_http_method(request))
        result.requestMethod = method;
    return result;
}

std::optional<host::WebChallenge> WebKitPolicy::challenge(WebKitAuthenticationRequest* request) {
    const WebKitAuthenticationScheme scheme = webkit_authentication_request_get_scheme(request);
    if (webkit_authentication_request_is_for_proxy(request) ||
        (scheme != WEBKIT_AUTHENTICATION_SCHEME_HTTP_BASIC &&
         scheme != WEBKIT_AUTHENTICATION_SCHEME_HTTP_DIGEST))
        return std::nullopt;
    WebKitSecurityOrigin* origin = webkit_authentication_request_get_security_origin(request);
    char* text = webkit_security_origin_to_string(origin);
    host::WebChallenge result{orEmpty(text),
                              orEmpty(webkit_authentication_request_get_realm(request)),
                              scheme == WEBKIT_AUTHENTICATION_SCHEME_HTTP_BASIC,
                              webkit_authentication_request_is_retry(request) != FALSE};
    g_free(text);
    webkit_security_origin_unref(origin);
    return result;
}

host::WebError WebKitPolicy::error(const GError& error, const std::string& url) {
    return {errorCode(error), orEmpty(error.message), url};
}

bool WebKitPolicy::isHTTP(const std::string& url) {
    const std::string scheme = schemeOf(url);
    return scheme == "http" || scheme == "https";
}

bool WebKitPolicy::isShowable(const std::string& url) {
    static constexpr std::array<std::string_view, 5> kSchemes{"http", "https", "about", "data",
                                                              "blob"};
    return std::find(kSchemes.begin(), kSchemes.end(), schemeOf(url)) != kSchemes.end();
}

}
