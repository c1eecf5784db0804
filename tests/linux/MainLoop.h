#pragma once
#include "tests/support/Testing.h"

#include <glib.h>

#include <chrono>

namespace vistrel {

/// Turns the main loop until `done` holds or the time is up; whether it holds.
inline bool turnUntil(const std::function<bool()>& done, double seconds = 20) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    // A tick keeps the loop from sleeping past the end.
    const guint tick = g_timeout_add(
        10, [](gpointer) -> gboolean { return TRUE; }, nullptr);
    while (!done() && std::chrono::steady_clock::now() < end)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(tick);
    return done();
}

/// Turns the main loop for a while, to see that nothing comes.
inline void turnFor(double seconds) {
    turnUntil([] { return false; }, seconds);
}

}
