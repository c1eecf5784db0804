#include "platform/linux/network/HTTPRequest.h"

#include "platform/foundation/HTTPRedirect.h"
#include "platform/foundation/HeaderFieldNames.h"

#include <libsoup/soup.h>

#include <algorithm>
#include <string_view>

namespace vistrel {

namespace {

constexpr const char* kUserAgent = "Vistrel/1.0";
constexpr auto kURIFlags = static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS);

bool isNamed(const std::string& field, std::string_view name) {
    return headerFieldNamesAreEqual(field, name);
}

bool fitsOneLine(std::string_view text) {
    return std::ranges::none_of(
        text, [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

void append(HeaderList& list, const std::string& field, const std::string& value) {
    if (field.empty() || !fitsOneLine(field) || !fitsOneLine(value))
        return;
    // libcurl reads "Field:" as a field to leave out.
    const std::string line = value.empty() ? field + ";" : field + ": " + value;
    curl_slist* longer = curl_slist_append(list.get(), line.c_str());
    (void)list.release();
    list.reset(longer);
}

}

bool isHTTP(const std::string& url) {
    return g_ascii_strncasecmp(url.c_str(), "http://", 7) == 0 ||
           g_ascii_strncasecmp(url.c_str(), "https://", 8) == 0;
}

ParsedURI parsedURI(const std::string& url) {
    ParsedURI uri(g_uri_parse(url.c_str(), kURIFlags, nullptr));
    const char* host = uri ? g_uri_get_host(uri.get()) : nullptr;
    return host && *host ? std::move(uri) : ParsedURI();
}

std::string textOf(GUri* uri) {
    char* text = g_uri_to_string(uri);
    std::string url = text;
    g_free(text);
    return url;
}

std::string resolvedURL(GUri* base, const std::string& location) {
    const ParsedURI target(g_uri_parse_relative(base, location.c_str(), kURIFlags, nullptr));
    return target ? textOf(target.get()) : std::string();
}

HeaderList headerLines(const host::TransferRequest& request, const std::string& cookies) {
    HeaderList list;
    bool hasUserAgent = false;
    bool hasAcceptEncoding = false;
    for (const auto& [field, value] : request.headers) {
        if (isNamed(field, "Cookie") && request.cookies != host::CookieUse::None)
            continue;
        hasUserAgent = hasUserAgent || isNamed(field, "User-Agent");
        hasAcceptEncoding = hasAcceptEncoding || isNamed(field, "Accept-Encoding");
        append(list, field, value);
    }
    if (!hasUserAgent)
        append(list, "User-Agent", kUserAgent);
    if (!hasAcceptEncoding)
        append(list, "Accept-Encoding", "gzip, deflate");
    if (!cookies.empty())
        append(list, "Cookie", cookies);
    if (request.ignoresCache) {
        append(list, "Cache-Control", "no-cache");
        append(list, "Pragma", "no-cache");
    }
    return list;
}

host::TransferRequest requestAfterRedirect(host::TransferRequest request, int status,
                                           const std::string& target) {
    const HTTPRedirect redirect{status, request.url, target};
    request.headers = redirect.fieldsAfter(std::move(request.headers), request.method);
    request.method = redirect.methodAfter(request.method);
    request.url = target;
    return request;
}

}
