#include "web/DownloadResumption.h"

#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/NSURLResponse.h"

namespace vistrel {

namespace {
std::string validatorOf(const NSURLResponse& response) {
    std::string tag = response.valueForHTTPHeaderField("ETag");
    // Files with the same weak tag may differ in their bytes.
    if (!tag.empty() && !tag.starts_with("W/"))
        return tag;
    return response.valueForHTTPHeaderField("Last-Modified");
}
}

DownloadResumption::DownloadResumption(const NSURLResponse& response)
    : validator_(response.expectedContentLength() >= 0 ? validatorOf(response) : std::string()) {}

void DownloadResumption::addTo(NSURLRequest& request, std::int64_t offset) const {
    request.setValueForHTTPHeaderField("bytes=" + std::to_string(offset) + "-", "Range");
    request.setValueForHTTPHeaderField(validator_, "If-Range");
    request.setValueForHTTPHeaderField("identity", "Accept-Encoding");
}

bool DownloadResumption::continues(const NSURLResponse& response, std::int64_t offset) const {
    const std::string start = "bytes " + std::to_string(offset) + "-";
    const std::string validator = validatorOf(response);
    return response.statusCode() == 206 && isPossible() &&
           response.valueForHTTPHeaderField("Content-Range").starts_with(start) &&
           (validator.empty() || validator == validator_);
}

}
