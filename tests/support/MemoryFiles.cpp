#include "tests/support/MemoryFiles.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace vistrel::support {

namespace {

host::Failure failure(int code) {
    return {code, std::strerror(code)};
}

/// The path without repeated slashes or one at its end.
std::string normal(const std::string& path) {
    std::string text = std::filesystem::path("/" + path).lexically_normal().string();
    if (text.ends_with('/'))
        text.pop_back();
    return text;
}

std::string folderOf(const std::string& normalPath) {
    return normalPath.substr(0, normalPath.rfind('/'));
}

bool isUnder(const std::set<std::string>& folders, const std::string& path) {
    const std::string inside = normal(path) + "/";
    return std::ranges::any_of(folders, [&](const std::string& folder) {
        return inside.starts_with(normal(folder) + "/");
    });
}

}

struct MemoryFiles::Node {
    bool isDirectory = false;
    double modificationTime = 0;
    std::uint64_t order = 0; ///< of creation
    std::vector<std::byte> bytes{};
};

class MemoryFiles::Stream : public host::FileStream {
public:
    Stream(MemoryFiles& files, NodePointer node)
        : files_(files)
        , open_(files.openStreams_)
        , node_(std::move(node)) {
        ++*open_;
    }
    ~Stream() override { --*open_; }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    host::Result<std::int64_t> seekToEnd() override {
        position_ = node_->bytes.size();
        return static_cast<std::int64_t>(position_);
    }
    host::Status write(std::span<const std::byte> bytes) override {
        if (auto status = files_.nextWrite(); !status)
            return status;
        const std::size_t end = position_ + bytes.size();
        node_->bytes.resize(std::max(node_->bytes.size(), end));
        std::ranges::copy(bytes, node_->bytes.begin() + static_cast<std::ptrdiff_t>(position_));
        node_->modificationTime = files_.clock_();
        position_ = end;
        return host::Done{};
    }
    host::Status close() override {
        if (files_.closeFailure_)
            return failure(files_.closeFailure_);
        return host::Done{};
    }

private:
    MemoryFiles& files_;
    std::shared_ptr<int> open_;
    NodePointer node_;
    std::size_t position_ = 0;
};

MemoryFiles::MemoryFiles(std::function<double()> clock)
    : clock_(std::move(clock)) {
    nodes_.emplace("", std::make_shared<Node>(Node{true}));
}

MemoryFiles::~MemoryFiles() = default;

MemoryFiles::NodePointer MemoryFiles::find(const std::string& path) const {
    const auto found = nodes_.find(normal(path));
    return found == nodes_.end() ? nullptr : found->second;
}

host::Result<MemoryFiles::NodePointer> MemoryFiles::findFile(const std::string& path) const {
    const NodePointer node = find(path);
    if (!node || node->isDirectory)
        return failure(node ? EISDIR : ENOENT);
    return node;
}

MemoryFiles::NodePointer MemoryFiles::add(const std::string& path, bool isDirectory) {
    auto node = std::make_shared<Node>(Node{isDirectory, clock_(), ++lastOrder_});
    nodes_.insert_or_assign(normal(path), node);
    return node;
}

host::Status MemoryFiles::checkFolderOf(const std::string& path) const {
    if (isUnder(readOnly_, path))
        return failure(EROFS);
    const NodePointer folder = find(folderOf(normal(path)));
    if (!folder || !folder->isDirectory)
        return failure(ENOENT);
    return host::Done{};
}

host::Status MemoryFiles::nextWrite() {
    if (writesUntilFailure_ == 1)
        return failure(writeFailure_);
    if (writesUntilFailure_ > 1)
        --writesUntilFailure_;
    return host::Done{};
}

host::Result<std::vector<std::string>> MemoryFiles::list(const std::string& path) {
    const NodePointer node = find(path);
    if (!node)
        return failure(ENOENT);
    if (!node->isDirectory)
        return failure(ENOTDIR);
    if (isUnder(unreadable_, path))
        return failure(EACCES);
    const std::string folder = normal(path) + "/";
    std::vector<std::pair<std::uint64_t, std::string>> entries;
    for (auto next = nodes_.lower_bound(folder);
         next != nodes_.end() && next->first.starts_with(folder); ++next) {
        if (next->first.find('/', folder.size()) == std::string::npos)
            entries.emplace_back(next->second->order, next->first.substr(folder.size()));
    }
    std::ranges::sort(entries);
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (auto& [order, name] : entries)
        names.push_back(std::move(name));
    return names;
}

host::Result<host::FileInfo> MemoryFiles::info(const std::string& path) {
    const NodePointer node = find(path);
    if (!node)
        return failure(ENOENT);
    return host::FileInfo{node->isDirectory, static_cast<std::int64_t>(node->bytes.size()),
                          node->modificationTime};
}

host::Status MemoryFiles::createDirectory(const std::string& path, bool withIntermediates) {
    if (const NodePointer existing = find(path)) {
        if (existing->isDirectory && withIntermediates)
            return host::Done{};
        return failure(EEXIST);
    }
    if (withIntermediates) {
        if (auto above = createDirectory(folderOf(normal(path)), true); !above)
            return above;
    }
    if (auto status = checkFolderOf(path); !status)
        return status;
    add(path, true);
    return host::Done{};
}

host::Status MemoryFiles::createFile(const std::string& path) {
    if (auto status = checkFolderOf(path); !status)
        return status;
    if (const NodePointer existing = find(path); existing && existing->isDirectory)
        return failure(EISDIR);
    add(path, false);
    return host::Done{};
}

host::Result<std::unique_ptr<host::FileStream>>
MemoryFiles::openForUpdating(const std::string& path) {
    if (auto status = checkFolderOf(path); !status)
        return status.failure();
    const auto file = findFile(path);
    if (!file)
        return file.failure();
    return std::unique_ptr<host::FileStream>(std::make_unique<Stream>(*this, file.value()));
}

host::Status MemoryFiles::move(const std::string& from, const std::string& to) {
    for (const std::string& path : {from, to}) {
        if (auto status = checkFolderOf(path); !status)
            return status;
    }
    if (const auto planned = moveFailures_.find(from); planned != moveFailures_.end())
        return failure(planned->second);
    const NodePointer node = find(from);
    if (!node)
        return failure(ENOENT);
    if (find(to))
        return failure(EEXIST);
    node->order = ++lastOrder_;
    const std::string source = normal(from);
    for (const auto& [path, each] : std::exchange(nodes_, {}))
        nodes_.emplace(isUnder({source}, path) ? normal(to) + path.substr(source.size()) : path,
                       each);
    return host::Done{};
}

host::Status MemoryFiles::remove(const std::string& path) {
    if (auto status = checkFolderOf(path); !status)
        return status;
    if (!find(path))
        return failure(ENOENT);
    std::erase_if(nodes_, [&](const auto& entry) { return isUnder({path}, entry.first); });
    return host::Done{};
}

host::Result<std::vector<std::byte>> MemoryFiles::read(const std::string& path) {
    const auto file = findFile(path);
    if (!file)
        return file.failure();
    if (isUnder(unreadable_, path))
        return failure(EACCES);
    return file.value()->bytes;
}

host::Status MemoryFiles::writeAtomically(const std::string& path,
                                          std::span<const std::byte> bytes) {
    if (auto status = nextWrite(); !status)
        return status;
    if (auto status = createFile(path); !status)
        return status;
    find(path)->bytes.assign(bytes.begin(), bytes.end());
    return host::Done{};
}

host::Status MemoryFiles::setTimes(const std::string& path, double seconds) {
    const NodePointer node = find(path);
    if (!node)
        return failure(ENOENT);
    node->modificationTime = seconds;
    return host::Done{};
}

void MemoryFiles::put(const std::string& path, std::string_view contents) {
    putFolder(folderOf(normal(path)));
    const auto bytes = std::as_bytes(std::span(contents));
    add(path, false)->bytes.assign(bytes.begin(), bytes.end());
}

void MemoryFiles::putFolder(const std::string& path) {
    (void)createDirectory(path, true);
}

std::optional<std::string> MemoryFiles::contents(const std::string& path) const {
    const auto file = findFile(path);
    if (!file)
        return std::nullopt;
    const auto& bytes = file.value()->bytes;
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

void MemoryFiles::failWritesFrom(int nth, int code) {
    writesUntilFailure_ = nth;
    writeFailure_ = code;
}

void MemoryFiles::clearFaults() {
    unreadable_.clear();
    readOnly_.clear();
    moveFailures_.clear();
    writesUntilFailure_ = 0;
    closeFailure_ = 0;
}

}
