#include "ads/Network/GADNetworkUtilities.h"

#include "ads/Utility/GADTextualDescription.h"
#include "platform/foundation/PercentEncoding.h"
#include "platform/foundation/UTF8Text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vistrel {

namespace {

std::string& sharedUserAgent() {
    static std::string userAgent;
    return userAgent;
}

/// One "key=value" of a query; nothing when it has another form or is not UTF-8.
std::optional<Value::Dictionary::Member> memberOf(std::string_view piece) {
    const auto equals = piece.find('=');
    if (equals == std::string_view::npos || piece.find('=', equals + 1) != std::string_view::npos)
        return std::nullopt;
    auto key = strictlyPercentDecoded(piece.substr(0, equals));
    auto value = strictlyPercentDecoded(piece.substr(equals + 1));
    if (!key || !value || !isUTF8(*key) || !isUTF8(*value))
        return std::nullopt;
    return Value::Dictionary::Member{lowercaseText(*key), std::move(*value)};
}

}

const std::string& GADNetworkUtilities::userAgentString() {
    return sharedUserAgent();
}

void GADNetworkUtilities::setUserAgentString(const std::string& userAgent) {
    if (!userAgent.empty())
        sharedUserAgent() = userAgent;
}

std::string GADNetworkUtilities::encodeURL(std::string_view text) {
    return percentEncodedComponent(text);
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
    std::vector<Value::Dictionary::Member> members;
    std::string_view rest = queryString.value_or("");
    while (!rest.empty()) {
        const auto end = std::min(rest.find_first_of("&;"), rest.size());
        if (auto member = memberOf(rest.substr(0, end)))
            members.push_back(std::move(*member));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return Value::Dictionary(std::move(members));
}

}
