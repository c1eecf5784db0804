#include "downloads/DownloadsFolder.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/PlainFilename.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

// The whole runs left to right, as extensions do; the name is isolated in it.
const std::string kLeftToRightMark = "\u200E";
const std::string kFirstStrongIsolate = "\u2068";
const std::string kPopDirectionalIsolate = "\u2069";

}

std::string pathOfDownload(const std::string& name) {
    return kDownloadsFolder + name;
}

std::string shownStem(const std::string& name) {
    return legibleFilename(stringByDeletingPathExtension(name));
}

std::string shownName(const std::string& name) {
    const std::string stem = shownStem(name);
    const std::string extension =
        legibleFilename(std::string_view(name).substr(stringByDeletingPathExtension(name).size()));
    const bool isPlain = std::ranges::all_of(
        stem + extension, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return isPlain
               ? stem + extension
               : kLeftToRightMark + kFirstStrongIsolate + stem + kPopDirectionalIsolate + extension;
}

std::vector<std::string> strayFilesInFolder(const std::string& folder) {
    auto listing = NSFileManager::defaultManager().contentsOfDirectoryAtPath(folder);
    return pathsMatchingExtensions(std::move(listing.names), kMediaExtensions);
}

void moveStrayFiles() {
    for (const std::string folder : kStrayFolders) {
        for (const std::string& name : strayFilesInFolder(folder))
            (void)NSFileManager::defaultManager().moveItemAtPathToPath(folder + name,
                                                                       pathOfDownload(name));
    }
}

}
