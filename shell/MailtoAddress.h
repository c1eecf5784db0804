#pragma once
#include <string>
#include <string_view>

namespace vistrel {

/// The mailto address (RFC 6068) of a plain-text mail to one recipient. Every byte that could end
/// or change a part of the address is escaped; line breaks of any kind become %0D%0A.
[[nodiscard]] std::string mailtoAddress(std::string_view recipient, std::string_view subject,
                                        std::string_view body);

}
