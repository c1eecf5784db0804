#pragma once
#include "demo/Pages.h"

#include <span>
#include <string_view>

namespace vistrel::demo {

/// Which page answers which addresses.
struct Route {
    std::string_view method; ///< GET includes HEAD
    std::string_view path;   ///< one ending in "*" matches every address with that prefix
    Answer (*answer)(Site&, const Request&);
    bool isLong = false; ///< slow to compute: runs on a separate thread
};

/// The first matching route counts.
std::span<const Route> routes();

/// The route for a request; null when there is none.
const Route* routeFor(const Request& request);

/// One heading of the index page with its addresses.
struct AddressGroup {
    std::string_view title;
    Addresses addresses;
};

/// Every documented address of the site, with one example of each family.
std::vector<AddressGroup> servedAddresses();
}
