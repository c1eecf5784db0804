#pragma once
#include <libsoup/soup.h>

namespace vistrel {

/// The cookies of the whole process: the connections', and, kept equal both ways, the page
/// engine's. Lives until the process ends.
[[nodiscard]] SoupCookieJar* sharedCookieJar();

}
