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
/// are ignored: a "Last-Modified" field that is cut before "GMT" ends with one. Were it
/// refused, the file would keep the time at which it was written, and a copy that the server
/// changed between its dates and ours would pass for current.
std::optional<double> secondsWithString(std::string_view text);

}
}
