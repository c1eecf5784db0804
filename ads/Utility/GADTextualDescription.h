#pragma once
#include "platform/foundation/Value.h"

#include <string>

namespace vistrel {

/// A value as the phone prints it: a text or a number as it stands, a boolean as 1 or 0, a date in
/// UTC, and containers over several lines with their entries indented.
std::string gadTextualDescription(const Value& value);

/// The same for a dictionary that is not wrapped in a value.
std::string gadTextualDescription(const Value::Dictionary& dictionary);

/// An address as %p prints it.
std::string gadAddressText(const void* object);

}
