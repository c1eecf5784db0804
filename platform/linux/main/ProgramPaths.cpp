#include "platform/linux/main/ProgramPaths.h"

#include <glib.h>

#include <filesystem>

namespace vistrel {

namespace {

std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path(error) : program.parent_path();
}

std::string firstFolder(std::initializer_list<std::filesystem::path> candidates) {
    std::error_code error;
    for (const auto& candidate : candidates)
        if (std::filesystem::is_directory(candidate, error))
            return candidate.lexically_normal().string();
    return candidates.begin()->string();
}

}

ProgramPaths ProgramPaths::find() {
    const auto folder = programFolder();
    ProgramPaths paths;
    paths.resources =
        firstFolder({folder / "share/vistrel", folder / VISTREL_DATA_FOLDER / "vistrel"});
    paths.translations =
        firstFolder({folder / "share/locale", folder / VISTREL_DATA_FOLDER / "locale"});
    paths.settingsFile =
        (std::filesystem::path(g_get_user_config_dir()) / "vistrel" / "vistrel.ini").string();
    return paths;
}

}
