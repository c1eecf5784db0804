#pragma once
#include <compare>

namespace vistrel {

/// A row of a table.
struct NSIndexPath {
    int section = 0;
    int row = 0;
    friend bool operator==(const NSIndexPath&, const NSIndexPath&) = default;
    // The comparison's zero is not a pointer. NOLINTNEXTLINE(modernize-use-nullptr)
    friend auto operator<=>(const NSIndexPath&, const NSIndexPath&) = default;
};

}
