#pragma once
#include "demo/Answer.h"

namespace vistrel::demo {

/// Narrows a whole answer to the one byte range that the request asks for, or turns it into
/// "not modified" or "range not satisfiable". Several ranges at once are not served: the whole is.
void applyConditionsAndRange(const Request& request, Answer& answer);
}
