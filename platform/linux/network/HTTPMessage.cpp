#include "platform/linux/network/HTTPMessage.h"

#include "platform/linux/network/CookieJar.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kUserAgent = "Vistrel/1.0";
constexpr auto kURIFlags = static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS);

using URI = std::unique_ptr<GUri, decltype(&g_uri_unref)>;

URI parsedURI(const std::string& text) {
    return {g_uri_parse(text.c_str(), kURIFlags, nullptr), g_uri_unref};
}

bool isNamed(const std::string& field, const char* name) {
    return g_ascii_strcasecmp(field.c_str(), name) == 0;
}

/// The jar's own handling would also keep what an answer sets.
void sendCookiesOnly(SoupMessage* message) {
    soup_message_disable_feature(message, SOUP_TYPE_COOKIE_JAR);
    char* cookies =
        soup_cookie_jar_get_cookies(sharedCookieJar(), soup_message_get_uri(message), TRUE);
    if (cookies && *cookies)
        soup_message_headers_replace(soup_message_get_request_headers(message), "Cookie", cookies);
    g_free(cookies);
}

void setHeaders(SoupMessage* message, const host::TransferRequest& request) {
    SoupMessageHeaders* headers = soup_message_get_request_headers(message);
    for (const auto& [field, value] : request.headers) {
        const bool jarsAffair =
            isNamed(field, "Cookie") && request.cookies != host::CookieUse::None;
        if (!jarsAffair)
            soup_message_headers_append(headers, field.c_str(), value.c_str());
    }
    // The session's own would replace a caller's.
    if (!soup_message_headers_get_one(headers, "User-Agent"))
        soup_message_headers_append(headers, "User-Agent", kUserAgent);
    if (request.ignoresCache) {
        soup_message_headers_replace(headers, "Cache-Control", "no-cache");
        soup_message_headers_replace(headers, "Pragma", "no-cache");
    }
}

void setCookies(SoupMessage* message, host::CookieUse use) {
    switch (use) {
    case host::CookieUse::SendAndStore:
        soup_message_set_first_party(message, soup_message_get_uri(message));
        break;
    case host::CookieUse::SendOnly:
        sendCookiesOnly(message);
        break;
    case host::CookieUse::None:
        soup_message_disable_feature(message, SOUP_TYPE_COOKIE_JAR);
        break;
    }
}

/// Type and subtype as they stand in the field.
std::string mimeTypeOf(SoupMessageHeaders* headers) {
    const char* field = soup_message_headers_get_one(headers, "Content-Type");
    std::string_view type = field ? field : "";
    type = type.substr(0, std::min(type.find_first_of(";,"), type.size()));
    constexpr std::string_view blanks = " \t";
    const auto begin = type.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return std::string(type.substr(begin, type.find_last_not_of(blanks) - begin + 1));
}

bool isCompressed(SoupMessageHeaders* headers) {
    const char* coding = soup_message_headers_get_list(headers, "Content-Encoding");
    return coding && *coding && g_ascii_strcasecmp(coding, "identity") != 0;
}

std::int64_t expectedLengthOf(SoupMessageHeaders* headers) {
    if (isCompressed(headers) ||
        soup_message_headers_get_encoding(headers) != SOUP_ENCODING_CONTENT_LENGTH)
        return -1;
    return soup_message_headers_get_content_length(headers);
}

bool isSameSite(const std::string& a, const std::string& b) {
    const URI first = parsedURI(a);
    const URI second = parsedURI(b);
    return first && second &&
           g_strcmp0(g_uri_get_scheme(first.get()), g_uri_get_scheme(second.get())) == 0 &&
           g_strcmp0(g_uri_get_host(first.get()), g_uri_get_host(second.get())) == 0 &&
           g_uri_get_port(first.get()) == g_uri_get_port(second.get());
}

}

std::optional<NativeReference<SoupMessage>> messageFor(const host::TransferRequest& request) {
    const URI uri = parsedURI(request.url);
    if (!uri || !g_uri_get_host(uri.get()) || !*g_uri_get_host(uri.get()))
        return std::nullopt;
    auto message = NativeReference<SoupMessage>::adopt(
        soup_message_new_from_uri(request.method.c_str(), uri.get()));
    soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
    setHeaders(message.get(), request);
    setCookies(message.get(), request.cookies);
    if (!request.body.empty()) {
        GBytes* bytes = g_bytes_new(request.body.data(), request.body.size());
        soup_message_set_request_body_from_bytes(message.get(), nullptr, bytes);
        g_bytes_unref(bytes);
    }
    return message;
}

host::TransferResponse responseOf(SoupMessage* message) {
    host::TransferResponse response;
    char* url = g_uri_to_string(soup_message_get_uri(message));
    response.url = url;
    g_free(url);
    response.status = static_cast<int>(soup_message_get_status(message));
    SoupMessageHeaders* headers = soup_message_get_response_headers(message);
    SoupMessageHeadersIter iterator;
    soup_message_headers_iter_init(&iterator, headers);
    const char* name = nullptr;
    const char* value = nullptr;
    while (soup_message_headers_iter_next(&iterator, &name, &value))
        response.headers.emplace_back(name, value);
    response.mimeType = mimeTypeOf(headers);
    response.expectedLength = expectedLengthOf(headers);
    return response;
}

std::optional<std::string> redirectTarget(SoupMessage* message) {
    const unsigned status = soup_message_get_status(message);
    const bool redirects =
        status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
    const char* location =
        soup_message_headers_get_one(soup_message_get_response_headers(message), "Location");
    if (!redirects || !location)
        return std::string();
    const URI target(
        g_uri_parse_relative(soup_message_get_uri(message), location, kURIFlags, nullptr),
        g_uri_unref);
    if (!target)
        return std::nullopt;
    char* text = g_uri_to_string(target.get());
    std::string url = text;
    g_free(text);
    return url;
}

host::TransferRequest requestAfterRedirect(host::TransferRequest request, unsigned status,
                                           const std::string& target) {
    const bool becomesGet = (status == 303 && request.method != "HEAD") ||
                            ((status == 301 || status == 302) && request.method == "POST");
    if (becomesGet) {
        request.method = "GET";
        request.body.clear();
        std::erase_if(request.headers, [](const auto& field) {
            return isNamed(field.first, "Content-Type") || isNamed(field.first, "Content-Length");
        });
    }
    if (!isSameSite(request.url, target)) {
        std::erase_if(request.headers, [](const auto& field) {
            return isNamed(field.first, "Authorization") || isNamed(field.first, "Cookie");
        });
    }
    request.url = target;
    return request;
}

host::TransferErrorKind errorKindOf(const GError* error) {
    using Kind = host::TransferErrorKind;
    if (error->domain == G_TLS_ERROR)
        return Kind::Security;
    if (error->domain == G_RESOLVER_ERROR)
        return Kind::CannotConnect;
    if (error->domain == SOUP_SESSION_ERROR)
        return Kind::ConnectionLost;
    if (error->domain != G_IO_ERROR)
        return Kind::Other;
    switch (error->code) {
    case G_IO_ERROR_CONNECTION_REFUSED:
    case G_IO_ERROR_HOST_UNREACHABLE:
    case G_IO_ERROR_NETWORK_UNREACHABLE:
    case G_IO_ERROR_HOST_NOT_FOUND:
    case G_IO_ERROR_PROXY_FAILED:
    case G_IO_ERROR_PROXY_NEED_AUTH:
        return Kind::CannotConnect;
    case G_IO_ERROR_TIMED_OUT:
        return Kind::TimedOut;
    case G_IO_ERROR_PARTIAL_INPUT:
    case G_IO_ERROR_CONNECTION_CLOSED:
        return Kind::ConnectionLost;
    default:
        return Kind::Other;
    }
}

}
