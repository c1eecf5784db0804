#include "ads/Network/GADNetworkUtilities.h"
#include "fuzz/Check.h"
#include "platform/foundation/UTF8Text.h"

#include <cstdint>
#include <string>

namespace {
using namespace vistrel;

/// The entries of a query after writing and reading them once more.
Value::Dictionary again(const Value::Dictionary& entries) {
    std::string query;
    for (const auto& [key, value] : entries) {
        query += '&' + GADNetworkUtilities::encodeURL(key) + '=' +
                 GADNetworkUtilities::encodeURL(value.string());
    }
    return GADNetworkUtilities::dictionaryFromQueryString(query);
}
}

/// Entries are UTF-8 with keys in lower case, and survive writing and reading.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto entries = GADNetworkUtilities::dictionaryFromQueryString(text);
    for (const auto& [key, value] : entries) {
        fuzz::check(isUTF8(key) && isUTF8(value.string()), "entries are text");
        for (const char character : key)
            fuzz::check(character < 'A' || character > 'Z', "keys are in lower case");
    }
    fuzz::check(again(entries) == entries, "entries survive");
    if (const auto url = NSURL::URLWithString("http://h/?" + std::string(text))) {
        const auto value = GADNetworkUtilities::parameterValueForKeyFromURL("ai", *url);
        fuzz::check(!value || value->find_first_of("&=") == std::string::npos, "a value is whole");
        const auto longer = GADNetworkUtilities::appendQueryKeyValueToURL("unique", text, *url);
        fuzz::check(longer.has_value(), "an address stays one");
    }
    return 0;
}
