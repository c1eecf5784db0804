#pragma once
#include "platform/host/Result.h"

namespace vistrel {

/// The failure of an error number, with the system's sentence for it.
[[nodiscard]] host::Failure posixFailure(int code);
/// The failure of the call that has just failed.
[[nodiscard]] host::Failure lastPosixFailure();

}
