#include "ads/Object/GADAdHeaders.h"

#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADTextUtilities.h"
#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/Trimmed.h"

#include <string>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

using Fields = NSURLResponse::HeaderFields;

/// Reads a blank-separated list; a server may send the field several times.
std::vector<NSURL> urlsOfField(const Fields& fields, std::string_view name) {
    std::vector<NSURL> urls;
    for (const std::string& list : valuesOfHeaderField(fields, name)) {
        for (const std::string& piece : gadComponents(list, ' '))
            if (auto url = NSURL::URLWithString(trimmed(piece)))
                urls.push_back(std::move(*url));
    }
    return urls;
}

std::optional<float> numberOfField(const Fields& fields, std::string_view name) {
    const std::string text = valueOfHeaderField(fields, name);
    return text.empty() ? std::nullopt : std::optional(GADNumberUtilities::floatWithString(text));
}

}

GADAdHeaders GADAdHeaders::fromFields(const Fields& fields) {
    GADAdHeaders headers;
    headers.trackingURLs = urlsOfField(fields, "X-Afma-Tracking-Urls");
    headers.clickURLs = urlsOfField(fields, "X-Afma-Click-Tracking-Urls");
    headers.orientations =
        gadSupportedOrientationsFromString(valueOfHeaderField(fields, "X-Afma-Orientation"));
    headers.interstitialTimeout = numberOfField(fields, "X-Afma-Interstitial-Timeout");
    headers.refreshRate = numberOfField(fields, "X-Afma-Refresh-Rate");
    return headers;
}

}
