#include "platform/linux/modules/NativeModule.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace vistrel {

namespace {

std::vector<std::filesystem::path> moduleFolders() {
    std::vector<std::filesystem::path> folders;
    if (const char* chosen = std::getenv("VISTREL_MODULES"))
        folders.emplace_back(chosen);
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        folders.push_back(program.parent_path() / "modules");
        folders.push_back(program.parent_path() / VISTREL_MODULES_FOLDER);
    }
    return folders;
}

/// Symbols are looked up in a module's own libraries first. Most of the page engine's symbols are
/// there, and searching the program's eighty libraries first would take half of the loading time.
/// Not if something replaces the C library's memory functions, which all code must then share.
int lookupOrder() {
#if defined(RTLD_DEEPBIND) && !defined(__SANITIZE_ADDRESS__)
    return std::getenv("LD_PRELOAD") ? 0 : RTLD_DEEPBIND;
#else
    return 0;
#endif
}

}

NativeModule::NativeModule(std::string file, Log log)
    : file_(std::move(file))
    , log_(std::move(log)) {}

void* NativeModule::symbol(const char* name) {
    return open() ? dlsym(handle_, name) : nullptr;
}

bool NativeModule::open() {
    if (std::exchange(tried_, true))
        return handle_ != nullptr;
    std::string reason = "not found";
    for (const auto& folder : moduleFolders()) {
        const auto path = folder / file_;
        std::error_code error;
        if (!std::filesystem::is_regular_file(path, error))
            continue;
        handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE | lookupOrder());
        if (handle_)
            return true;
        if (const char* message = dlerror())
            reason = message;
    }
    if (log_)
        log_("The module " + file_ + " cannot be loaded: " + reason);
    return false;
}

}
