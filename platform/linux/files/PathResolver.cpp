#include "platform/linux/files/PathResolver.h"

#include "platform/linux/files/PosixFailure.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <vector>

namespace vistrel {

namespace {

int openBelow(int root, const std::string& path, int flags) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags | O_CLOEXEC);
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    return static_cast<int>(
        ::syscall(SYS_openat2, root, path.empty() ? "." : path.c_str(), &how, sizeof how));
}

std::vector<std::string> componentsOf(const std::string& path) {
    std::vector<std::string> components;
    std::string component;
    for (const char character : path + "/") {
        if (character != '/') {
            component += character;
            continue;
        }
        if (component == ".." && !components.empty())
            components.pop_back();
        else if (!component.empty() && component != "." && component != "..")
            components.push_back(component);
        component.clear();
    }
    return components;
}

}

PathResolver::PathResolver(const std::string& root, Walk walk)
    : root_(::open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    , walk_(walk) {
    if (walk_ == Walk::ByKernel) {
        const FileDescriptor probe(openBelow(root_.number(), ".", O_PATH));
        if (!probe.isOpen() && (errno == ENOSYS || errno == EPERM))
            walk_ = Walk::ByComponents;
    }
}

host::Result<FileDescriptor> PathResolver::open(const std::string& path, int flags) const {
    if (walk_ == Walk::ByComponents)
        return walkByComponents(path, flags);
    // The kernel asks for another try when something was renamed meanwhile.
    for (int tries = 0; tries < 16; ++tries) {
        const int number = openBelow(root_.number(), path, flags);
        if (number >= 0)
            return FileDescriptor(number);
        if (errno != EAGAIN && errno != EINTR)
            break;
    }
    return lastPosixFailure();
}

host::Result<FileDescriptor> PathResolver::walkByComponents(const std::string& path,
                                                            int flags) const {
    const auto components = componentsOf(path);
    FileDescriptor folder(::openat(root_.number(), ".", O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (components.empty())
        folder = FileDescriptor(::openat(root_.number(), ".", flags | O_CLOEXEC));
    for (std::size_t index = 0; folder.isOpen() && index < components.size(); ++index) {
        const bool last = index + 1 == components.size();
        const int how = last ? flags | O_NOFOLLOW : O_PATH | O_DIRECTORY | O_NOFOLLOW;
        folder =
            FileDescriptor(::openat(folder.number(), components[index].c_str(), how | O_CLOEXEC));
    }
    if (!folder.isOpen())
        return lastPosixFailure();
    struct stat attributes {};
    if (::fstat(folder.number(), &attributes) == 0 && S_ISLNK(attributes.st_mode))
        return posixFailure(ELOOP);
    return folder;
}

host::Result<PathResolver::Place> PathResolver::placeOf(const std::string& path) const {
    std::string trimmed = path;
    while (trimmed.ends_with('/'))
        trimmed.pop_back();
    const auto slash = trimmed.rfind('/');
    std::string name = slash == std::string::npos ? trimmed : trimmed.substr(slash + 1);
    if (name.empty() || name == "." || name == "..")
        return posixFailure(EINVAL);
    auto folder = open(slash == std::string::npos ? std::string() : trimmed.substr(0, slash),
                       O_PATH | O_DIRECTORY);
    if (!folder)
        return folder.failure();
    return Place{std::move(folder.value()), std::move(name)};
}

}
