#pragma once
#include "web/DownloadableMedia.h"

#include <array>
#include <string>
#include <vector>

namespace vistrel {

/// Folders in which other tools of the device leave their downloads, in the order in which they are
/// searched.
inline constexpr std::array<const char*, 4> kStrayFolders{
    "/var/root/Library/Downloads/", "/var/mobile/Documents/Installous/Downloads/",
    "/var/mobile/Downloads/", "/var/mobile/Media/Downloads/"};

/// One file of the downloads folder.
std::string pathOfDownload(const std::string& name);
/// A file's name for display, without and with its extension. Right-to-left text and invisible
/// marks in the name cannot disguise the extension.
std::string shownStem(const std::string& name);
std::string shownName(const std::string& name);
/// The media files of one stray folder, in listing order; empty when it cannot be read.
std::vector<std::string> strayFilesInFolder(const std::string& folder);
/// Moves every stray file into the downloads folder. What cannot be moved stays where it is.
void moveStrayFiles();

}
