#include "platform/foundation/NSURLConnectionDelegate.h"

#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/NSURLResponse.h"

namespace vistrel {

std::optional<NSURLRequest> NSURLConnectionDelegate::connectionWillSendRequestRedirectResponse(
    NSURLConnection&, const NSURLRequest& request, const NSURLResponse*) {
    return request;
}

void NSURLConnectionDelegate::connectionDidReceiveResponse(NSURLConnection&, const NSURLResponse&) {
}

void NSURLConnectionDelegate::connectionDidReceiveData(NSURLConnection&,
                                                       std::span<const std::byte>) {}

void NSURLConnectionDelegate::connectionDidFinishLoading(NSURLConnection&) {}

void NSURLConnectionDelegate::connectionDidFailWithError(NSURLConnection&, const NSError&) {}

}
