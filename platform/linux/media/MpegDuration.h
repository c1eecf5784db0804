#pragma once
#include <cstdint>
#include <string>

namespace vistrel {

/// Finds the length of an MPEG audio file with a variable bit rate and no header for it by reading
/// all frames.
namespace MpegDuration {

/// Whether frames at a few positions between the offsets have different bit rates.
bool variesInRate(const std::string& path, std::int64_t firstFrame, std::int64_t end);
/// The total length of the frames between the offsets in seconds; 0 when there are none.
double byWalking(const std::string& path, std::int64_t firstFrame, std::int64_t end);

}
}
