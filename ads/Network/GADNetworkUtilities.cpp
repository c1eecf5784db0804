#include "ads/Network/GADNetworkUtilities.h"

#include "ads/Network/GADQueryReader.h"
#include "ads/Utility/GADTextualDescription.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vistrel {

namespace {

std::string& sharedUserAgent() {
    static std::string userAgent;
    return userAgent;
}

constexpr bool isUnreserved(unsigned char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' || byte == '_' || byte == '~';
}

/// How each byte is written: its characters, and in the last place how many they are.
using Escape = std::array<char, 4>;
constexpr std::array<Escape, 256> kEscapes = [] {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<Escape, 256> escapes{};
    for (unsigned byte = 0; byte < escapes.size(); ++byte) {
        if (isUnreserved(static_cast<unsigned char>(byte)))
            escapes[byte] = {static_cast<char>(byte), 0, 0, 1};
        else
            escapes[byte] = {'%', digits[byte >> 4], digits[byte & 15], 3};
    }
    return escapes;
}();

}

const std::string& GADNetworkUtilities::userAgentString() {
    return sharedUserAgent();
}

void GADNetworkUtilities::setUserAgentString(const std::string& userAgent) {
    if (!userAgent.empty())
        sharedUserAgent() = userAgent;
}

std::string GADNetworkUtilities::encodeURL(std::string_view text) {
    // Piece by piece through a buffer that holds any piece's escapes: one pass, no counting first.
    constexpr std::size_t pieceSize = 256;
    std::array<char, pieceSize * 3 + sizeof(Escape)> buffer;
    std::string encoded;
    while (!text.empty()) {
        char* at = buffer.data();
        for (const char character : text.substr(0, pieceSize)) {
            // All four bytes are stored; the next entry overwrites what is not this one's own.
            const Escape escape = kEscapes[static_cast<unsigned char>(character)];
            std::memcpy(at, escape.data(), sizeof(Escape));
            at += escape[3];
        }
        encoded.append(buffer.data(), static_cast<std::size_t>(at - buffer.data()));
        text.remove_prefix(std::min(pieceSize, text.size()));
    }
    return encoded;
}

std::optional<NSURL>
GADNetworkUtilities::appendQueryParametersToURL(const Value::Dictionary& parameters,
                                                const NSURL& url) {
    std::string text = url.absoluteString();
    char separator = url.query().empty() ? '?' : '&';
    for (const auto& [key, value] : parameters) {
        text += separator;
        text += key;
        separator = '&';
        const std::string escaped = encodeURL(gadTextualDescription(value));
        if (!escaped.empty())
            text += '=' + escaped;
    }
    return NSURL::URLWithString(text);
}

std::optional<NSURL> GADNetworkUtilities::appendQueryKeyValueToURL(
    const std::string& key, std::optional<std::string_view> value, const NSURL& url) {
    return appendQueryParametersToURL({{key, value.value_or("")}}, url);
}

std::optional<std::string> GADNetworkUtilities::parameterValueForKeyFromURL(std::string_view key,
                                                                            const NSURL& url) {
    const std::string query = url.query();
    std::string_view rest = query;
    for (bool more = true; more;) {
        const auto end = rest.find('&');
        const std::string_view piece = rest.substr(0, end);
        more = end != std::string_view::npos;
        if (more)
            rest.remove_prefix(end + 1);
        const auto equals = piece.find('=');
        if (equals == std::string_view::npos || piece.substr(0, equals) != key)
            continue;
        const std::string_view value = piece.substr(equals + 1);
        return std::string(value.substr(0, value.find('=')));
    }
    return std::nullopt;
}

Value::Dictionary
GADNetworkUtilities::dictionaryFromQueryString(std::optional<std::string_view> queryString) {
    return queryString ? GADQueryReader(*queryString).read() : Value::Dictionary();
}

}
