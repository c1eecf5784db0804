#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// Address handling, and the user agent of the library's requests.
class GADNetworkUtilities {
public:
    /// The library's web views' user agent; empty until one of them has sent a request.
    static const std::string& userAgentString();
    /// An empty text changes nothing.
    static void setUserAgentString(const std::string& userAgent);

    /// Escapes every byte but letters, digits and "-._~".
    static std::string encodeURL(std::string_view text);

    /// Appends the entries in order. Keys are not escaped, values are; an empty value yields the
    /// bare key. Empty when a key makes the result invalid.
    static std::optional<NSURL> appendQueryParametersToURL(const Value::Dictionary& parameters,
                                                           const NSURL& url);
    /// The same for one entry.
    static std::optional<NSURL> appendQueryKeyValueToURL(const std::string& key,
                                                         std::optional<std::string_view> value,
                                                         const NSURL& url);

    /// The first value of exactly this key in the query, not unescaped.
    static std::optional<std::string> parameterValueForKeyFromURL(std::string_view key,
                                                                  const NSURL& url);

    /// The entries of a query, keys in lower case, both parts unescaped; "+" stays a plus sign.
    /// Pieces that are not one key and one value, or not UTF-8, are left out.
    static Value::Dictionary dictionaryFromQueryString(std::optional<std::string_view> queryString);
};

}
