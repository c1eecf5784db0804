#pragma once
#include "platform/host/Result.h"

#include <sys/stat.h>

#include <string>
#include <vector>

namespace vistrel {

/// Lists folders, and remembers the last long list: as long as the folder's own times say that
/// nothing was added, removed or renamed in it, listing it again reads nothing.
class RecentListing {
public:
    /// A change within `settling` seconds before a listing may be followed by another that leaves
    /// the same time, on file systems whose clocks tick slowly: such a list is not remembered.
    explicit RecentListing(double settling = 3)
        : settling_(settling) {}

    /// The names in an open folder, in the order in which the file system returns them.
    [[nodiscard]] host::Result<std::vector<std::string>> namesIn(int folder);
    /// Whether namesIn would read nothing.
    [[nodiscard]] bool remembers(int folder) const;

private:
    [[nodiscard]] bool isTheSame(const struct stat& attributes) const;

    double settling_;
    struct stat folder_ {};
    std::vector<std::string> names_; ///< empty: none is remembered
};

}
