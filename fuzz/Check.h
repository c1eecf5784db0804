#pragma once
#include <cstdio>
#include <cstdlib>

namespace fuzz {
/// Stops the run, whatever the build, when what must hold does not.
inline void check(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
}
