#pragma once
#include "platform/foundation/NSURL.h"

namespace vistrel {

/// Where the user left the films that are files, kept in the user's defaults: those that were left
/// last. Films that were hardly begun or almost over start from the beginning.
class MoviePositions {
public:
    /// Seconds; 0 for a film without a position.
    static double positionOf(const NSURL& film);
    static void leave(const NSURL& film, double position, double duration);
    /// When the file is deleted.
    static void forget(const NSURL& film);
    /// When the file gets another address.
    static void move(const NSURL& film, const NSURL& to);
};

}
