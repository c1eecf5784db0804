#include "platform/linux/main/RuntimeFolder.h"

#include <glib.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace vistrel {

RuntimeFolder::~RuntimeFolder() {
    if (path_.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    // Only when it is empty.
    std::filesystem::remove(std::filesystem::path(path_).parent_path(), ignored);
}

bool RuntimeFolder::make() {
    if (!path_.empty())
        return true;
    // Of the places where it can be, the page engine's sandbox shows only the user's cache to the
    // engine's processes, which end without the display's socket.
    const std::string parent = std::string(g_get_user_cache_dir()) + "/vistrel";
    std::string folder = parent + "/runtime-XXXXXX";
    if (g_mkdir_with_parents(parent.c_str(), 0700) != 0 || !g_mkdtemp(folder.data()))
        return false;
    path_ = folder;
    return true;
}

void RuntimeFolder::replaceMissing() {
    if (std::getenv("XDG_RUNTIME_DIR") || !make())
        return;
    setenv("XDG_RUNTIME_DIR", path_.c_str(), 1);
    (void)g_get_user_runtime_dir(); // which it keeps
    unsetenv("XDG_RUNTIME_DIR");
}

void RuntimeFolder::replaceForDisplay() {
    if (!make())
        return;
    if (const char* session = std::getenv("XDG_RUNTIME_DIR")) {
        setenv("PIPEWIRE_RUNTIME_DIR", session, 0);
        setenv("PULSE_RUNTIME_PATH", (std::string(session) + "/pulse").c_str(), 0);
    }
    setenv("XDG_RUNTIME_DIR", path_.c_str(), 1);
}

}
