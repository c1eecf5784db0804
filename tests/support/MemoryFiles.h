#pragma once
#include "platform/host/Files.h"
#include "tests/support/Testing.h"

namespace vistrel::support {

/// A device's file system in memory, with faults on demand. Folders list in the order of creation.
class MemoryFiles : public host::Files {
public:
    /// `clock` gives modification times.
    explicit MemoryFiles(std::function<double()> clock);
    ~MemoryFiles() override;

    host::Result<std::vector<std::string>> list(const std::string& path) override;
    host::Result<host::FileInfo> info(const std::string& path) override;
    host::Status createDirectory(const std::string& path, bool withIntermediates) override;
    host::Status createFile(const std::string& path) override;
    host::Result<std::unique_ptr<host::FileStream>>
    openForUpdating(const std::string& path) override;
    host::Status move(const std::string& from, const std::string& to) override;
    host::Status remove(const std::string& path) override;
    host::Result<std::vector<std::byte>> read(const std::string& path) override;
    host::Status writeAtomically(const std::string& path,
                                 std::span<const std::byte> bytes) override;
    host::Status setTimes(const std::string& path, double seconds) override;
    std::string machinePath(const std::string& path) const override { return "/memory" + path; }

    /// Puts a file there, with the folders above it.
    void put(const std::string& path, std::string_view contents = {});
    void putFolder(const std::string& path);
    /// Nothing when there is no such file.
    std::optional<std::string> contents(const std::string& path) const;

    /// The n-th write from now (1: the next) and all after it fail.
    void failWritesFrom(int nth, int code);
    void failClose(int code) { closeFailure_ = code; }
    /// Listing and reading below the path fail with EACCES.
    void makeUnreadable(const std::string& path) { unreadable_.insert(path); }
    /// Creating, moving, removing and opening for writing below the path fail with EROFS.
    void makeReadOnly(const std::string& path) { readOnly_.insert(path); }
    /// Moving this path fails.
    void failMove(const std::string& from, int code) { moveFailures_.insert_or_assign(from, code); }
    void clearFaults();

    int openStreams() const { return *openStreams_; }

private:
    struct Node;
    class Stream;
    using NodePointer = std::shared_ptr<Node>;

    /// Null when nothing has that path.
    NodePointer find(const std::string& path) const;
    host::Result<NodePointer> findFile(const std::string& path) const;
    NodePointer add(const std::string& path, bool isDirectory);
    /// Whether a new entry may be made at the path: its folder exists and can be written to.
    host::Status checkFolderOf(const std::string& path) const;
    host::Status nextWrite();

    std::function<double()> clock_;
    /// By path, without a slash at the end: the root is "".
    std::map<std::string, NodePointer> nodes_;
    std::uint64_t lastOrder_ = 0;
    std::set<std::string> unreadable_;
    std::set<std::string> readOnly_;
    std::map<std::string, int> moveFailures_;
    int writesUntilFailure_ = 0;
    int writeFailure_ = 0;
    int closeFailure_ = 0;
    std::shared_ptr<int> openStreams_ = std::make_shared<int>(0);
};

}
