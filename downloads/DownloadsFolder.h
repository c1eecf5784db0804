#pragma once
#include "web/DownloadFile.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// The one folder into which everything is downloaded, and which of its files count as what.
inline constexpr const char* kDownloadsFolder = DownloadFile::kFolder;

/// Compared exactly: of the spellings only all-lower and all-upper count.
inline constexpr std::array<std::string_view, 4> kVideoExtensions{"m4v", "M4V", "mp4", "MP4"};
inline constexpr std::array<std::string_view, 2> kMusicExtensions{"mp3", "MP3"};
inline constexpr std::array<std::string_view, 6> kMediaExtensions{"m4v", "M4V", "mp4",
                                                                  "MP4", "mp3", "MP3"};

/// Folders in which other tools of the device leave their downloads, in the order in which they are
/// searched.
inline constexpr std::array<const char*, 4> kStrayFolders{
    "/var/root/Library/Downloads/", "/var/mobile/Documents/Installous/Downloads/",
    "/var/mobile/Downloads/", "/var/mobile/Media/Downloads/"};

/// One file of the downloads folder.
std::string pathOfDownload(const std::string& name);
/// The media files of one stray folder, in listing order; none when it cannot be read.
std::vector<std::string> strayFilesInFolder(const std::string& folder);
/// Moves every stray file into the downloads folder. What cannot be moved stays where it is.
void moveStrayFiles();

}
