#pragma once
#include <cstdio>
#include <cstdlib>

namespace fuzz {
/// Aborts the run, in every build type, when the condition is false.
inline void check(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "check failed: %s\n", what);
    std::abort();
}
}
