#include "platform/foundation/NSError.h"

#include <utility>

namespace vistrel {

NSError::NSError(std::string domain, int code, std::string localizedDescription,
                 std::shared_ptr<const NSError> underlyingError)
    : domain_(std::move(domain))
    , code_(code)
    , localizedDescription_(std::move(localizedDescription))
    , underlyingError_(std::move(underlyingError)) {}

std::string NSError::description() const {
    return "Error Domain=" + domain_ + " Code=" + std::to_string(code_) + " \"" +
           localizedDescription_ + "\"";
}

}
