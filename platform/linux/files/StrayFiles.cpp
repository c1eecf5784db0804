#include "platform/linux/files/StrayFiles.h"

#include "platform/linux/files/NewFile.h"

#include <filesystem>
#include <system_error>

namespace vistrel {

namespace fs = std::filesystem;

void removeStrayFiles(const std::string& root, const std::stop_token& stop) {
    std::error_code error;
    fs::recursive_directory_iterator entry(root, fs::directory_options::skip_permission_denied,
                                           error);
    while (!error && entry != fs::recursive_directory_iterator() && !stop.stop_requested()) {
        if (isStrayName(entry->path().filename().string())) {
            std::error_code ignored;
            entry.disable_recursion_pending();
            fs::remove_all(entry->path(), ignored);
        }
        entry.increment(error);
    }
}

}
