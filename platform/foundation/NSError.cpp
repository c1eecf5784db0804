#include "platform/foundation/NSError.h"

#include <utility>

namespace vistrel {

NSError::NSError(std::string domain, int code, std::string localizedDescription,
                 std::shared_ptr<const NSError> underlyingError)
    : domain_(std::move(domain))
    , code_(code)
    , localizedDescription_(std::move(localizedDescription))
    , underlyingError_(std::move(underlyingError))
    , userInfo_{{NSLocalizedDescriptionKey, localizedDescription_}} {}

NSError::NSError(std::string domain, int code, Value::Dictionary userInfo)
    : domain_(std::move(domain))
    , code_(code)
    , userInfo_(std::move(userInfo)) {
    if (const Value* description = userInfo_.find(NSLocalizedDescriptionKey))
        localizedDescription_ = description->string();
}

NSError::~NSError() {
    std::shared_ptr<const NSError> next = std::move(underlyingError_);
    while (next && next.use_count() == 1) {
        // A sole owner may take the link from an error that is about to be destroyed.
        next = std::move(const_cast<NSError&>(*next).underlyingError_);
    }
}

std::string NSError::description() const {
    return "Error Domain=" + domain_ + " Code=" + std::to_string(code_) + " \"" +
           localizedDescription_ + "\"";
}

}
