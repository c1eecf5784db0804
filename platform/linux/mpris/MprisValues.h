#pragma once
#include "platform/host/MediaControls.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

using GVariant = struct _GVariant;

namespace vistrel::MprisValues {

/// The bus counts in microseconds.
std::int64_t microseconds(double seconds);
double seconds(std::int64_t microseconds);

/// "Playing", "Paused" or "Stopped".
const char* playbackStatus(const host::NowPlaying& nowPlaying);
/// "None", "Track" or "Playlist".
const char* loopStatus(host::NowPlaying::Loop loop);
/// Nothing for any other text.
std::optional<host::NowPlaying::Loop> loopFrom(std::string_view status);
/// The object path that stands for a track.
std::string trackPath(const host::NowPlaying& nowPlaying);
/// A floating a{sv}; fields without a value are left out, and none stand where nothing plays.
GVariant* metadata(const host::NowPlaying& nowPlaying, const std::string& url);

}
