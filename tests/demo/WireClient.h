#pragma once
#include <string>
#include <string_view>

namespace vistrel::demo {

/// The response, byte for byte.
struct Reply {
    enum class End { Closed, Reset, Silence };

    int status = 0;
    std::string head; ///< status line and headers
    std::string body;
    End end = End::Closed;

    /// The value of the first header of that name as it was sent; empty when there is none.
    std::string header(std::string_view name) const;
};

/// What to send.
struct Query {
    std::string address;
    std::string headers = {};        ///< whole lines, each with its line end
    int silenceMilliseconds = 20000; ///< stops reading after that long without a byte
};

/// Asks the shared site and reads until the connection ends.
Reply ask(const Query& query);
Reply ask(const std::string& address);
}
