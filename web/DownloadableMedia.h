#pragma once
#include <algorithm>
#include <array>
#include <string_view>

namespace vistrel {

/// The one folder into which everything is downloaded.
inline constexpr const char* kDownloadsFolder = "/var/mobile/Library/Downloads/";

/// Answers of these types are offered for download.
inline constexpr std::array<std::string_view, 3> kDownloadableMIMETypes{"video/mp4", "video/m4v",
                                                                        "audio/mpeg"};

/// Whether the media type, exactly as sent, is one that the application downloads.
inline bool isDownloadableMIMEType(std::string_view mimeType) {
    return std::ranges::find(kDownloadableMIMETypes, mimeType) != kDownloadableMIMETypes.end();
}

/// What the library lists. Compared exactly: only all-lower and all-upper spellings count.
inline constexpr std::array<std::string_view, 4> kVideoExtensions{"m4v", "M4V", "mp4", "MP4"};
inline constexpr std::array<std::string_view, 2> kMusicExtensions{"mp3", "MP3"};
inline constexpr std::array<std::string_view, 6> kMediaExtensions{"m4v", "M4V", "mp4",
                                                                  "MP4", "mp3", "MP3"};

}
