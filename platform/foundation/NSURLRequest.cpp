#include "platform/foundation/NSURLRequest.h"

#include "platform/foundation/HeaderFieldNames.h"

#include <utility>

namespace vistrel {

NSURLRequest::NSURLRequest(std::optional<NSURL> URL, NSURLRequestCachePolicy cachePolicy,
                           double timeoutInterval)
    : URL_(std::move(URL))
    , cachePolicy_(cachePolicy)
    , timeoutInterval_(timeoutInterval) {}

std::string NSURLRequest::valueForHTTPHeaderField(std::string_view field) const {
    return valueOfHeaderField(fields_, field);
}

void NSURLRequest::setValueForHTTPHeaderField(std::string value, std::string field) {
    for (auto& [name, current] : fields_) {
        if (headerFieldNamesAreEqual(name, field)) {
            current = std::move(value);
            return;
        }
    }
    fields_.emplace_back(std::move(field), std::move(value));
}

bool NSURLRequest::isSafeToRepeat() const {
    return method_ == "GET" || method_ == "HEAD";
}

}
