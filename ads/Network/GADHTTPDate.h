#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// Dates of the form "Sun, 06 Nov 1994 08:49:37", in GMT, without a zone name.
namespace GADHTTPDate {

/// `seconds` since 1970-01-01 UTC; a fraction is cut off.
std::string stringWithSeconds(double seconds);

/// Whole seconds since 1970-01-01 UTC; empty when the text is not such a date. Surrounding blanks
/// are ignored: a "Last-Modified" field from which "GMT" has been cut ends with one. If it were
/// rejected, the file would keep the time at which it was written, and a change on the server
/// between the two times would go unnoticed.
std::optional<double> secondsWithString(std::string_view text);

}
}
