#pragma once
#include "platform/foundation/Value.h"

#include <string>

namespace vistrel {
/// The text that represents a value that JSON cannot express: a date as "2011-01-31 12:00:00
/// +0000", data as "<01020304 05>". Empty for any other kind.
[[nodiscard]] std::string zelJSONDescription(const Value& value);
}
