#include "downloads/DownloadsFolder.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileManager.h"

#include <utility>

namespace vistrel {

std::string pathOfDownload(const std::string& name) {
    return kDownloadsFolder + name;
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
