#include "ads/Network/GADNetworkUtilities.h"

#include "ads/Network/GADQueryReader.h"
#include "ads/Utility/GADTextualDescription.h"

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
    std::size_t escapes = 0;
    for (const char character : text)
        escapes += isUnreserved(static_cast<unsigned char>(character)) ? 0 : 1;
    if (escapes == 0)
        return std::string(text);
    // Every byte stores the whole four of its entry; the next byte overwrites what is not its own.
    std::string encoded(text.size() + 2 * escapes + sizeof(Escape), '\0');
    char* at = encoded.data();
    for (const char character : text) {
        const Escape& escape = kEscapes[static_cast<unsigned char>(character)];
        std::memcpy(at, escape.data(), sizeof(Escape));
        at += escape[3];
    }
    encoded.resize(static_cast<std::size_t>(at - encoded.data()));
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
