#include "demo/Misbehaviour.h"

#include <algorithm>
#include <array>

namespace vistrel::demo {
namespace {
constexpr std::array<MisbehaviourExample, 18> examples = {{
    {"slow=64", "Slow: 64 KB a second"},
    {"stall=100000", "Stalls forever after 100,000 bytes"},
    {"stall=0", "Stalls forever after the headers"},
    {"truncate=100000", "Closes early, after 100,000 bytes"},
    {"nolength", "Announces no length"},
    {"nolength&truncate=100000", "Announces no length and closes early"},
    {"chunked", "Sent in chunks"},
    {"wronglength=5000", "Announces 5,000 bytes more than it sends"},
    {"wronglength=-5000", "Announces 5,000 bytes less than it sends"},
    {"more=5000", "Sends 5,000 bytes more than the file has"},
    {"reset=100000", "Resets the connection after 100,000 bytes"},
    {"reset=0", "Resets the connection after the headers"},
    {"status=404", "Not found"},
    {"status=503", "Unavailable"},
    {"gzip", "Compressed answer"},
    {"delay=3", "Answers after 3 seconds"},
    {"delay=99999", "Never answers"},
    {"delay=2&slow=128", "Answers after 2 seconds, then slowly"},
}};

std::optional<uint64_t> countOf(const Request& request, std::string_view name) {
    const std::optional<std::string> text = request.parameter(name);
    if (!text)
        return std::nullopt;
    return static_cast<uint64_t>(std::max(0LL, numberFrom(*text, 0)));
}
}

bool Misbehaviour::needsOwnWire() const {
    return slow || stall || truncate || reset || noLength || wrongLength || more > 0;
}

Misbehaviour misbehaviourOf(const Request& request) {
    Misbehaviour asked;
    asked.delay = static_cast<double>(countOf(request, "delay").value_or(0));
    if (const std::optional<uint64_t> status = countOf(request, "status");
        status && *status >= 400 && *status <= 599)
        asked.status = static_cast<int>(*status);
    asked.gzip = request.parameter("gzip").has_value();
    asked.chunked = request.parameter("chunked").has_value();
    asked.slow = countOf(request, "slow");
    if (asked.slow == 0U)
        asked.slow = 1;
    asked.stall = countOf(request, "stall");
    asked.truncate = countOf(request, "truncate");
    asked.reset = countOf(request, "reset");
    asked.noLength = request.parameter("nolength").has_value();
    if (const std::optional<std::string> text = request.parameter("wronglength"))
        asked.wrongLength = numberFrom(*text, 0);
    asked.more = countOf(request, "more").value_or(0);
    return asked;
}

std::span<const MisbehaviourExample> misbehaviourExamples() {
    return examples;
}
}
