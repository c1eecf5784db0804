#pragma once
#include "demo/Answer.h"

namespace vistrel::demo {

/// Narrows a full response to the requested byte range, or turns it into
/// "not modified" or "range not satisfiable". Several ranges at once get the full response.
void applyConditionsAndRange(const Request& request, Answer& answer);
}
