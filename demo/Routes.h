#pragma once
#include "demo/Pages.h"

#include <span>
#include <string_view>

namespace vistrel::demo {

/// Which page answers which addresses.
struct Route {
    std::string_view method; ///< GET stands for HEAD too
    std::string_view path;   ///< one ending in "*" takes every address that begins so
    Answer (*answer)(Site&, const Request&);
    bool isLong = false; ///< takes long to compute: answered on a thread of its own
};

/// The first route that fits counts.
std::span<const Route> routes();

/// The route for a request; null when there is none.
const Route* routeFor(const Request& request);

/// One heading of the index page with its addresses.
struct AddressGroup {
    std::string_view title;
    Addresses addresses;
};

/// Every address that the site is known for. Where any of a family will do, one stands for it.
std::vector<AddressGroup> servedAddresses();
}
