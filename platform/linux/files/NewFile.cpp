#include "platform/linux/files/NewFile.h"

#include "platform/linux/files/PosixFailure.h"
#include "platform/linux/files/PosixFileStream.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace vistrel {

namespace {
constexpr const char* kHiddenStart = ".vistrel-";
constexpr mode_t kFileMode = 0644;
constexpr int kMostTries = 100;
}

std::string newHiddenName() {
    static std::atomic<unsigned> count{0};
    return kHiddenStart + std::to_string(::getpid()) + "-" + std::to_string(++count);
}

bool isStrayName(std::string_view name) {
    if (!name.starts_with(kHiddenStart))
        return false;
    const std::string_view numbers = name.substr(std::strlen(kHiddenStart));
    const auto dash = numbers.find('-');
    const auto isNumber = [](std::string_view text) {
        return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
    };
    return dash != std::string_view::npos && isNumber(numbers.substr(0, dash)) &&
           isNumber(numbers.substr(dash + 1)) &&
           numbers.substr(0, dash) != std::to_string(::getpid());
}

NewFile::NewFile(int folder, std::string hiddenName, FileDescriptor file)
    : folder_(folder)
    , hiddenName_(std::move(hiddenName))
    , file_(std::move(file)) {}

NewFile::NewFile(NewFile&& other) noexcept
    : folder_(other.folder_)
    , hiddenName_(std::exchange(other.hiddenName_, {}))
    , file_(std::move(other.file_)) {}

NewFile::~NewFile() {
    if (!hiddenName_.empty())
        ::unlinkat(folder_, hiddenName_.c_str(), 0);
}

host::Result<NewFile> NewFile::createIn(int folder) {
    for (int tries = 0; tries < kMostTries; ++tries) {
        std::string name = newHiddenName();
        FileDescriptor file(::openat(
            folder, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kFileMode));
        if (file.isOpen())
            return NewFile(folder, std::move(name), std::move(file));
        // Left over from a process of the same number that was killed.
        if (errno != EEXIST)
            return lastPosixFailure();
    }
    return posixFailure(EEXIST);
}

host::Status NewFile::sync() const {
    if (::fdatasync(file_.number()) != 0)
        return lastPosixFailure();
    return host::Done{};
}

host::Status NewFile::replace(const std::string& name) {
    if (::renameat(folder_, hiddenName_.c_str(), folder_, name.c_str()) != 0)
        return lastPosixFailure();
    hiddenName_.clear();
    return host::Done{};
}

host::Status NewFile::takeName(const std::string& name) {
    auto renamed = renameWithoutReplacing(folder_, hiddenName_, folder_, name);
    if (renamed)
        hiddenName_.clear();
    return renamed;
}

host::Status renameWithoutReplacing(int fromFolder, const std::string& from, int toFolder,
                                    const std::string& to) {
    if (::syscall(SYS_renameat2, fromFolder, from.c_str(), toFolder, to.c_str(),
                  RENAME_NOREPLACE) == 0)
        return host::Done{};
    if (errno != EINVAL && errno != ENOSYS)
        return lastPosixFailure();
    // A file system that cannot do it in one step: a second name for a file never replaces either.
    if (::linkat(fromFolder, from.c_str(), toFolder, to.c_str(), 0) != 0)
        return lastPosixFailure();
    if (::unlinkat(fromFolder, from.c_str(), 0) != 0) {
        const auto failure = lastPosixFailure();
        ::unlinkat(toFolder, to.c_str(), 0);
        return failure;
    }
    return host::Done{};
}

host::Status writeFileAtomically(int folder, const std::string& name,
                                 std::span<const std::byte> bytes) {
    auto file = NewFile::createIn(folder);
    if (!file)
        return file.failure();
    if (auto written = writeAll(file.value().number(), bytes); !written)
        return written;
    if (auto synced = file.value().sync(); !synced)
        return synced;
    return file.value().replace(name);
}

}
