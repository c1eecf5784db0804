#pragma once
#include <cstdint>
#include <string>

namespace vistrel {

/// The length of an MPEG audio file whose bit rate varies and that has no header to say so, found
/// by walking its frames.
namespace MpegDuration {

/// Whether frames at a few places between the offsets have different bit rates.
bool variesInRate(const std::string& path, std::int64_t firstFrame, std::int64_t end);
/// Seconds of all frames between the offsets; 0 when there are none.
double byWalking(const std::string& path, std::int64_t firstFrame, std::int64_t end);

}
}
