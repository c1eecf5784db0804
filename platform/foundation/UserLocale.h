#pragma once

namespace vistrel {
/// Takes over the user's language, but leaves numbers as programs write them: progress texts, ad
/// requests and property lists are read back, and a decimal comma would be misread.
void adoptUserLocale();
}
