#include "ads/Object/GADAdHeaders.h"
#include "ads/Utility/GADTextUtilities.h"
#include "fuzz/Check.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace {
using namespace vistrel;
using Fields = NSURLResponse::HeaderFields;

Fields fieldsFromText(std::string_view text) {
    Fields fields;
    for (const std::string& line : gadComponents(text, '\n')) {
        const auto colon = line.find(": ");
        if (colon != std::string::npos)
            fields.emplace_back(line.substr(0, colon), line.substr(colon + 2));
    }
    return fields;
}

/// The same fields, one for each address, with names in lower case.
Fields again(const GADAdHeaders& headers, const Fields& fields) {
    Fields written;
    for (const auto& [name, value] : fields) {
        const std::string lower = gadLowerCased(name);
        if (!lower.ends_with("-tracking-urls"))
            written.emplace_back(lower, value);
    }
    for (const NSURL& url : headers.trackingURLs)
        written.emplace_back("x-afma-tracking-urls", url.absoluteString());
    for (const NSURL& url : headers.clickURLs)
        written.emplace_back("x-afma-click-tracking-urls", url.absoluteString());
    return written;
}

void checkNumber(const std::optional<float>& number) {
    fuzz::check(!number || std::isfinite(*number), "seconds are a number");
}
}

/// Header fields of an ad response, one per line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Fields fields =
        fieldsFromText(std::string_view(reinterpret_cast<const char*>(data), size));
    const auto headers = GADAdHeaders::fromFields(fields);
    checkNumber(headers.refreshRate);
    checkNumber(headers.interstitialTimeout);
    for (const auto& urls : {headers.trackingURLs, headers.clickURLs}) {
        for (const NSURL& url : urls)
            fuzz::check(url.absoluteString().find_first_of(" \t\r\n") == std::string::npos,
                        "an address is one piece of a list");
    }
    const auto reread = GADAdHeaders::fromFields(again(headers, fields));
    fuzz::check(reread.trackingURLs == headers.trackingURLs, "tracking addresses survive");
    fuzz::check(reread.clickURLs == headers.clickURLs, "click addresses survive");
    fuzz::check(reread.orientations == headers.orientations, "the orientation survives");
    fuzz::check(reread.refreshRate == headers.refreshRate &&
                    reread.interstitialTimeout == headers.interstitialTimeout,
                "seconds survive");
    return 0;
}
