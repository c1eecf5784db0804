#pragma once
#include "platform/foundation/NSError.h"
#include "platform/foundation/Value.h"

namespace vistrel {

/// Why there is no ad, with the library's numbers.
enum class GADErrorCode : int {
    InvalidRequest = 0,
    NoFill = 1,
    NetworkError = 2,
    ServerError = 3,
    OSVersionTooLow = 4,
    Timeout = 5
};

/// The oldest system on which the library loads ads.
inline constexpr int kGADMinimumOSMajorVersion = 3;
inline constexpr int kGADMinimumOSMinorVersion = 0;

/// A failed ad request, in the domain kGADErrorDomain.
class GADRequestError : public NSError {
public:
    /// `parameters` are those of the failed request; the error of an invalid request carries them.
    GADRequestError(GADErrorCode code, const Value::Dictionary& parameters);
};

}
