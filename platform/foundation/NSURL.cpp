#include "platform/foundation/NSURL.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/PercentEncoding.h"

#include <algorithm>
#include <charconv>

namespace vistrel {

namespace {

/// The five pieces of RFC 3986, appendix B; a piece that is absent differs from an empty one.
struct Pieces {
    std::optional<std::string_view> scheme;
    std::optional<std::string_view> authority;
    std::string_view path;
    std::optional<std::string_view> query;
    std::optional<std::string_view> fragment;
};

std::optional<std::string_view> cutFrom(std::string_view& text, char mark) {
    const auto at = text.find(mark);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view cut = text.substr(at + 1);
    text = text.substr(0, at);
    return cut;
}

Pieces piecesOf(std::string_view text) {
    Pieces pieces;
    pieces.fragment = cutFrom(text, '#');
    pieces.query = cutFrom(text, '?');
    const auto colon = text.find(':');
    if (colon != std::string_view::npos && colon < text.find('/')) {
        pieces.scheme = text.substr(0, colon);
        text.remove_prefix(colon + 1);
    }
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const auto end = std::min(text.find('/'), text.size());
        pieces.authority = text.substr(0, end);
        text.remove_prefix(end);
    }
    pieces.path = text;
    return pieces;
}

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text[0]) &&
           std::ranges::all_of(
               text,
               [](char character) {
                   return isLetter(character) || isDigit(character) || character == '+' ||
                          character == '-' || character == '.';
               });
}

bool contains(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

/// Characters that page engines leave unescaped although RFC 3986 does not allow them.
bool mayStandInAddress(char character) {
    return isLetter(character) || isDigit(character) ||
           contains("-._~:/?#[]@!$&'()*+,;=%|\\^`{}", character);
}

bool mayStandInHost(char character) {
    return isLetter(character) || isDigit(character) || contains("-._~!$&'()*+,;=%", character);
}

struct HostAndPort {
    std::string_view host;
    std::optional<std::string_view> port;
    bool bracketed = false;
};

HostAndPort hostAndPortOf(std::string_view authority) {
    const auto at = authority.rfind('@');
    if (at != std::string_view::npos)
        authority.remove_prefix(at + 1);
    HostAndPort result;
    if (authority.starts_with('[')) {
        const auto end = authority.find(']');
        if (end != std::string_view::npos) {
            result.bracketed = true;
            result.host = authority.substr(1, end - 1);
            authority.remove_prefix(end + 1);
            if (authority.starts_with(':'))
                result.port = authority.substr(1);
            else if (!authority.empty())
                result.host = {};
            return result;
        }
    }
    result.port = cutFrom(authority, ':');
    result.host = authority;
    return result;
}

std::optional<int> numberOfPort(std::string_view text) {
    int port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port < 0 || port > 65535)
        return std::nullopt;
    return port;
}

bool isAuthority(std::string_view authority) {
    const HostAndPort parts = hostAndPortOf(authority);
    if (parts.port && !parts.port->empty() && !numberOfPort(*parts.port))
        return false;
    if (parts.bracketed) {
        return !parts.host.empty() && std::ranges::all_of(
                                          parts.host,
                                          [](char character) {
                                              return isLetter(character) || isDigit(character) ||
                                                     contains(":.-_~%", character);
                                          });
    }
    return std::ranges::all_of(parts.host, mayStandInHost) &&
           authority.find_first_of("[]\\^`{}|") == std::string_view::npos;
}

bool needsHost(const Pieces& pieces) {
    return pieces.scheme && (headerFieldNamesAreEqual(*pieces.scheme, "http") ||
                             headerFieldNamesAreEqual(*pieces.scheme, "https"));
}

}

std::optional<NSURL> NSURL::URLWithString(std::string_view text) {
    if (text.empty() || !std::ranges::all_of(text, mayStandInAddress))
        return std::nullopt;
    const Pieces pieces = piecesOf(text);
    if (pieces.scheme && !isScheme(*pieces.scheme))
        return std::nullopt;
    if (pieces.authority && !isAuthority(*pieces.authority))
        return std::nullopt;
    if (needsHost(pieces) && (!pieces.authority || hostAndPortOf(*pieces.authority).host.empty()))
        return std::nullopt;
    if (!strictlyPercentDecoded(text))
        return std::nullopt;
    return NSURL(std::string(text));
}

NSURL NSURL::fileURLWithPath(std::string_view path) {
    return NSURL("file://" + percentEncodedPath(path));
}

std::string NSURL::scheme() const {
    return std::string(piecesOf(text_).scheme.value_or(""));
}

std::string NSURL::host() const {
    return std::string(hostAndPortOf(piecesOf(text_).authority.value_or("")).host);
}

std::optional<int> NSURL::port() const {
    const auto port = hostAndPortOf(piecesOf(text_).authority.value_or("")).port;
    return port ? numberOfPort(*port) : std::nullopt;
}

std::string NSURL::path() const {
    return percentDecoded(piecesOf(text_).path);
}

std::string NSURL::escapedPath() const {
    return std::string(piecesOf(text_).path);
}

std::string NSURL::query() const {
    return std::string(piecesOf(text_).query.value_or(""));
}

std::string NSURL::fragment() const {
    return std::string(piecesOf(text_).fragment.value_or(""));
}

std::string NSURL::lastPathComponent() const {
    std::string_view path = piecesOf(text_).path;
    if (path == "/")
        return "/";
    while (path.ends_with('/'))
        path.remove_suffix(1);
    const auto slash = path.rfind('/');
    return percentDecoded(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

bool NSURL::isFileURL() const {
    return headerFieldNamesAreEqual(piecesOf(text_).scheme.value_or(""), "file");
}

bool NSURL::isHTTP() const {
    return needsHost(piecesOf(text_));
}

}
