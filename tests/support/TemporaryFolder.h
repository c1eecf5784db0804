#pragma once
#include "tests/support/Testing.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace vistrel::support {

inline std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder of this machine that is removed with its contents.
class TemporaryFolder {
public:
    explicit TemporaryFolder(
        const std::filesystem::path& in = std::filesystem::temp_directory_path())
        : path_(in / "vistrel-XXXXXX") {
        ::mkdtemp(path_.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    /// Of an entry.
    std::string path(const std::string& name) const { return path_ + "/" + name; }
    /// Writes a file and returns its path.
    std::string put(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

private:
    std::string path_;
};

}
