#pragma once
#include <libsoup/soup.h>

namespace vistrel {

/// The cookies of the whole process, shared by connections and, synchronised in both directions,
/// the page engine. Lives until the process ends.
[[nodiscard]] SoupCookieJar* sharedCookieJar();

}
