#pragma once
#include <string>
#include <string_view>

namespace vistrel::demo {

/// What came back over the wire, to the byte.
struct Reply {
    enum class End { Closed, Reset, Silence };

    int status = 0;
    std::string head; ///< status line and headers
    std::string body;
    End end = End::Closed;
    double seconds = 0;

    /// The value of the first header of that name as it was sent; empty when there is none.
    std::string header(std::string_view name) const;
};

/// What to send. A body makes it a posted form.
struct Query {
    std::string address;
    std::string headers = {}; ///< whole lines, each with its line end
    std::string form = {};
    int silenceMilliseconds = 20000; ///< gives up after so long without a byte
};

/// Asks the shared site and reads until the connection ends. Follows nothing, forgives nothing.
Reply ask(const Query& query);
Reply ask(const std::string& address);

/// Whether anything listens on that port of this machine.
bool isListening(int port);
}
