#pragma once

namespace vistrel {
/// Adopts the user's language, but keeps numbers as programs write them: progress texts, ad
/// requests and property lists are read back, and a decimal comma would be misread.
void adoptUserLocale();
}
