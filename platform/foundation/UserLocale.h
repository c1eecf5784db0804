#pragma once
#include <string>

namespace vistrel {
/// Adopts the user's language, but keeps numbers as programs write them: progress texts, ad
/// requests and property lists are read back, and a decimal comma would be misread. Returns the
/// name of a locale that the system does not have; an empty one when it has them all.
std::string adoptUserLocale();
}
