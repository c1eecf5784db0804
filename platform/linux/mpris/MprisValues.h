#pragma once
#include "platform/host/MediaControls.h"

#include <cstdint>
#include <string>

using GVariant = struct _GVariant;

namespace vistrel::MprisValues {

/// The bus counts in microseconds.
std::int64_t microseconds(double seconds);
double seconds(std::int64_t microseconds);

/// "Playing", "Paused" or "Stopped".
const char* playbackStatus(const host::NowPlaying& nowPlaying);
/// The object path that stands for a track.
std::string trackPath(const host::NowPlaying& nowPlaying);
/// A floating a{sv}; fields without a value are left out, and none stand where nothing plays.
GVariant* metadata(const host::NowPlaying& nowPlaying);

}
