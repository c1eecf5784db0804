#pragma once
#include "demo/Body.h"

#include <string>

namespace vistrel::demo {

/// The SHA-256 of all bytes, in lower-case hexadecimal.
std::string sha256Of(const Body& body);
}
