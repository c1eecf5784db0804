#pragma once
#include "demo/Body.h"

namespace vistrel::demo {

/// The body compressed with gzip.
Body gzipped(const Body& body);
}
