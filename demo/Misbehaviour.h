#pragma once
#include "demo/Answer.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vistrel::demo {

/// The faults that a request asks for. Any address accepts these query parameters.
struct Misbehaviour {
    double delay = 0;                   ///< seconds before the answer
    std::optional<int> status;          ///< an error page with this status instead
    bool gzip = false;                  ///< compressed answer
    bool chunked = false;               ///< sent in chunks, without a length
    std::optional<uint64_t> slow;       ///< kilobytes (1024 bytes) a second
    std::optional<uint64_t> stall;      ///< sends nothing more after so many bytes
    std::optional<uint64_t> truncate;   ///< closes after so many bytes
    std::optional<uint64_t> reset;      ///< resets the connection after so many bytes
    bool noLength = false;              ///< no length announced
    std::optional<int64_t> wrongLength; ///< announces so many bytes more (or less) than it sends
    uint64_t more = 0;                  ///< sends so many bytes more than announced

    /// Whether the answer must be written byte for byte instead of by a well-behaved server.
    bool needsOwnWire() const;
};

Misbehaviour misbehaviourOf(const Request& request);

/// One line of the list for people and tests.
struct MisbehaviourExample {
    std::string_view query;
    std::string_view title;
};

std::span<const MisbehaviourExample> misbehaviourExamples();
}
