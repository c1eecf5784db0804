#pragma once
#include <string>
#include <vector>

namespace vistrel {

/// Addresses of a user's profile in the social network's client applications, in the order in which
/// they are tried.
std::vector<std::string> socialProfileClientAddresses(const std::string& userName);
/// The profile's page for phones on the web.
std::string socialProfileWebAddress(const std::string& userName);

}
