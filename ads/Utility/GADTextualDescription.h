#pragma once
#include "platform/foundation/Value.h"

#include <string>

namespace vistrel {

/// A value as the phone prints it: texts and numbers unchanged, booleans as 1 or 0, dates in UTC,
/// and containers on several lines with indented entries.
std::string gadTextualDescription(const Value& value);

/// The same for a dictionary that is not wrapped in a value.
std::string gadTextualDescription(const Value::Dictionary& dictionary);

/// An address as %p prints it.
std::string gadAddressText(const void* object);

}
