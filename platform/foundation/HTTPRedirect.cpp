#include "platform/foundation/HTTPRedirect.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLCredentialStorage.h"

#include <optional>

namespace vistrel {

namespace {

/// Empty for an invalid address.
std::string siteOf(const std::string& address) {
    const auto url = NSURL::URLWithString(address);
    return url ? originOf(*url) : std::string();
}

}

std::string HTTPRedirect::methodAfter(const std::string& method) const {
    const bool becomesGet = (status == 303 && method != "HEAD") ||
                            ((status == 301 || status == 302) && method == "POST");
    return becomesGet ? "GET" : method;
}

HTTPRedirect::HeaderFields HTTPRedirect::fieldsAfter(HeaderFields fields,
                                                     const std::string& method) const {
    const auto erase = [&fields](const char* name) {
        std::erase_if(fields, [name](const auto& field) {
            return headerFieldNamesAreEqual(field.first, name);
        });
    };
    if (methodAfter(method) != method)
        erase("Content-Type");
    const std::string site = siteOf(from);
    if (!site.empty() && site == siteOf(to))
        return fields;
    erase("Authorization");
    erase("Cookie");
    for (auto& [name, value] : fields)
        if (headerFieldNamesAreEqual(name, "Referer"))
            value = siteOf(value) + "/";
    return fields;
}

}
