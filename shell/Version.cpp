#include "shell/Version.h"

namespace vistrel {

const char* const kVersion = VISTREL_VERSION;

}
