#pragma once
#include "platform/foundation/Value.h"

#include <string>

namespace vistrel {
/// What stands in JSON for a value that JSON has no form for: a date as
/// "2011-01-31 12:00:00 +0000", data as "<01020304 05>". Empty for any other kind.
[[nodiscard]] std::string zelJSONDescription(const Value& value);
}
