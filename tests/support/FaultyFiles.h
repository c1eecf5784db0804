#pragma once
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/files/PosixFailure.h"
#include "tests/support/TemporaryFolder.h"

namespace vistrel::support {

/// A device's files in a temporary folder, with faults on demand. Folders list in the order
/// of creation.
class FaultyFiles : TemporaryFolder, public DeviceFiles {
public:
    FaultyFiles()
        : DeviceFiles(TemporaryFolder::path()) {}

    host::Result<std::vector<std::string>> list(const std::string& path) override {
        if (const auto status = check(Access::Read, path); !status)
            return status.failure();
        auto names = DeviceFiles::list(path);
        if (names)
            std::ranges::sort(names.value(), {}, [this](const std::string& name) {
                return std::ranges::find(created_, name) - created_.begin();
            });
        return names;
    }
    host::Status createFile(const std::string& path) override {
        noteCreation(path);
        const auto status = check(Access::Change, path);
        return status ? DeviceFiles::createFile(path) : status;
    }
    host::Result<std::unique_ptr<host::FileStream>>
    openForUpdating(const std::string& path) override {
        auto stream = DeviceFiles::openForUpdating(path);
        if (stream)
            stream.value() = std::make_unique<Stream>(*this, std::move(stream.value()));
        return stream;
    }
    host::Status move(const std::string& from, const std::string& to) override {
        noteCreation(to);
        const auto status = check(Access::Change, from);
        return status ? DeviceFiles::move(from, to) : status;
    }
    host::Status remove(const std::string& path) override {
        const auto status = check(Access::Change, path);
        return status ? DeviceFiles::remove(path) : status;
    }
    host::Status writeAtomically(const std::string& path,
                                 std::span<const std::byte> bytes) override {
        for (const auto& status : {check(Access::Change, path), nextWrite()})
            if (!status)
                return status;
        return DeviceFiles::writeAtomically(path, bytes);
    }

    /// Puts a file there, with the folders above it.
    void put(const std::string& path, const std::string& contents = {}) {
        putFolder(path.substr(0, path.rfind('/')));
        TemporaryFolder::put(path, contents);
        noteCreation(path);
    }
    void putFolder(const std::string& path) {
        (void)createDirectory(path, true);
        noteCreation(path);
    }
    /// Nothing when there is no such file.
    std::optional<std::string> contents(const std::string& path) {
        return read(path) ? std::optional(contentsOf(machinePath(path))) : std::nullopt;
    }
    /// Of every file in the folder, by name.
    std::map<std::string, std::string> contentsOfFolder(const std::string& path) {
        std::map<std::string, std::string> found;
        const auto names = DeviceFiles::list(path);
        for (const std::string& name : names.value())
            if (const auto bytes = contents(path + name))
                found[name] = *bytes;
        return found;
    }

    /// The n-th write from now (1: the next) and all after it fail.
    void failWritesFrom(int nth, int code) {
        writesUntilFailure_ = nth;
        writeFailure_ = code;
    }
    void failClose(int code) { closeFailure_ = code; }
    /// Listing a folder whose path begins so fails with EACCES.
    void makeUnreadable(const std::string& path) {
        faults_.push_back({Access::Read, path, EACCES});
    }
    /// Creating, moving, removing and replacing below the path fail with EROFS.
    void makeReadOnly(const std::string& path) { faults_.push_back({Access::Change, path, EROFS}); }
    void failMove(const std::string& from, int code) {
        faults_.push_back({Access::Change, from, code});
    }
    void clearFaults() {
        faults_.clear();
        writesUntilFailure_ = closeFailure_ = 0;
    }

    int openStreams() const { return openStreams_; }

private:
    class Stream : public host::FileStream {
    public:
        Stream(FaultyFiles& files, std::unique_ptr<host::FileStream> stream)
            : files_(files)
            , stream_(std::move(stream)) {
            ++files_.openStreams_;
        }
        ~Stream() override { --files_.openStreams_; }
        Stream(const Stream&) = delete;
        Stream& operator=(const Stream&) = delete;
        host::Result<std::int64_t> seekToEnd() override { return stream_->seekToEnd(); }
        host::Status write(std::span<const std::byte> bytes) override {
            const auto status = files_.nextWrite();
            return status ? stream_->write(bytes) : status;
        }
        host::Status close() override {
            const int code = files_.closeFailure_;
            return code ? host::Status(posixFailure(code)) : stream_->close();
        }

    private:
        FaultyFiles& files_;
        std::unique_ptr<host::FileStream> stream_;
    };

    enum class Access { Read, Change };
    struct Fault {
        Access access;
        std::string path; ///< and all that begins so
        int code;
    };
    host::Status check(Access access, const std::string& path) const {
        for (const Fault& fault : faults_)
            if (fault.access == access && path.starts_with(fault.path))
                return posixFailure(fault.code);
        return host::Done{};
    }
    void noteCreation(const std::string& path) {
        const std::string name = path.substr(path.rfind('/') + 1);
        std::erase(created_, name);
        created_.push_back(name);
    }
    host::Status nextWrite() {
        if (writesUntilFailure_ == 1)
            return posixFailure(writeFailure_);
        writesUntilFailure_ -= writesUntilFailure_ > 0;
        return host::Done{};
    }

    std::vector<std::string> created_; ///< names, the youngest last
    std::vector<Fault> faults_;
    int writesUntilFailure_ = 0;
    int writeFailure_ = 0;
    int closeFailure_ = 0;
    int openStreams_ = 0;
};

}
