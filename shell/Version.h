#pragma once

namespace vistrel {

extern const char* const kVersion;

}
