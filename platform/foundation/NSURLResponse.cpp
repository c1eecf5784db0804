#include "platform/foundation/NSURLResponse.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/SuggestedFilename.h"

#include <utility>

namespace vistrel {

NSURLResponse::NSURLResponse(NSURL URL, int statusCode, HeaderFields allHeaderFields,
                             std::string MIMEType, std::int64_t expectedContentLength)
    : URL_(std::move(URL))
    , statusCode_(statusCode)
    , fields_(std::move(allHeaderFields))
    , MIMEType_(std::move(MIMEType))
    , expectedContentLength_(expectedContentLength) {}

std::string NSURLResponse::valueForHTTPHeaderField(std::string_view field) const {
    return valueOfHeaderField(fields_, field);
}

std::string NSURLResponse::suggestedFilename() const {
    // If joined, the parameters of one field would run into those of the next.
    const auto dispositions = valuesOfHeaderField(fields_, "Content-Disposition");
    return vistrel::suggestedFilename(dispositions.empty() ? std::string() : dispositions.front(),
                                      URL_.absoluteString(), MIMEType_);
}

}
