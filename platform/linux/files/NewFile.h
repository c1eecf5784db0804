#pragma once
#include "platform/host/Files.h"
#include "platform/linux/files/FileDescriptor.h"

#include <string>
#include <string_view>

namespace vistrel {

/// A new file under a hidden name in an open folder, which takes its real name when it is whole and
/// goes away otherwise. It may be read by everyone, and is never executable.
class NewFile {
public:
    /// `folder` must outlive it.
    [[nodiscard]] static host::Result<NewFile> createIn(int folder);
    NewFile(NewFile&& other) noexcept;
    NewFile& operator=(NewFile&&) = delete;
    ~NewFile();

    int number() const { return file_.number(); }
    const std::string& hiddenName() const { return hiddenName_; }
    /// Puts what was written on the disk.
    [[nodiscard]] host::Status sync() const;
    /// Takes the place of a file, or link, of that name.
    [[nodiscard]] host::Status replace(const std::string& name);
    /// Fails with EEXIST when the name is taken.
    [[nodiscard]] host::Status takeName(const std::string& name);

private:
    NewFile(int folder, std::string hiddenName, FileDescriptor file);

    int folder_;
    std::string hiddenName_; ///< empty once it has its real name
    FileDescriptor file_;
};

/// A name that no other of this process, nor of another at the same time, takes.
[[nodiscard]] std::string newHiddenName();
/// Whether a name is one of newHiddenName in another process.
[[nodiscard]] bool isStrayName(std::string_view name);

/// Renames within or across open folders of one file system; fails with EEXIST when the target is
/// there, and with EXDEV across file systems.
[[nodiscard]] host::Status renameWithoutReplacing(int fromFolder, const std::string& from,
                                                  int toFolder, const std::string& to);

/// Writes a file of the machine so that after a crash at any moment it has the old or the new
/// content.
[[nodiscard]] host::Status writeFileAtomically(int folder, const std::string& name,
                                               std::span<const std::byte> bytes);

}
