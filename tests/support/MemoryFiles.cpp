#include "tests/support/MemoryFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace vistrel::support {

namespace {

host::Failure failure(int code) {
    return {code, std::strerror(code)};
}

std::vector<std::string> components(const std::string& path) {
    std::vector<std::string> names;
    std::string name;
    for (const char character : path + "/") {
        if (character != '/') {
            name += character;
            continue;
        }
        if (!name.empty())
            names.push_back(std::exchange(name, {}));
    }
    return names;
}

std::string joined(const std::vector<std::string>& names, std::size_t count) {
    std::string path;
    for (std::size_t index = 0; index < count; ++index)
        path += "/" + names[index];
    return path;
}

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

}

struct MemoryFiles::Node {
    bool isDirectory = false;
    std::vector<std::byte> bytes;
    double modificationTime = 0;
    std::vector<std::pair<std::string, NodePointer>> children;

    NodePointer child(const std::string& name) const {
        const auto found =
            std::ranges::find(children, name, &std::pair<std::string, NodePointer>::first);
        return found == children.end() ? nullptr : found->second;
    }
    void erase(const std::string& name) {
        std::erase_if(children, [&](const auto& entry) { return entry.first == name; });
    }
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
        if (auto failed = files_.nextWriteFailure())
            return *failed;
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
    : clock_(std::move(clock))
    , root_(std::make_shared<Node>()) {
    root_->isDirectory = true;
}

MemoryFiles::~MemoryFiles() = default;

MemoryFiles::NodePointer MemoryFiles::find(const std::string& path) const {
    NodePointer node = root_;
    for (const std::string& name : components(path)) {
        if (!node)
            return nullptr;
        node = node->child(name);
    }
    return node;
}

MemoryFiles::NodePointer MemoryFiles::folderOf(const std::string& path) const {
    const auto names = components(path);
    if (names.empty())
        return nullptr;
    NodePointer folder = find(joined(names, names.size() - 1));
    return folder && folder->isDirectory ? folder : nullptr;
}

bool MemoryFiles::isUnder(const std::map<std::string, bool>& paths, const std::string& path) const {
    const auto names = components(path);
    for (std::size_t count = 0; count <= names.size(); ++count) {
        if (paths.contains(joined(names, count)) || paths.contains(joined(names, count) + "/"))
            return true;
    }
    return false;
}

std::optional<host::Failure> MemoryFiles::refusesWriting(const std::string& path) const {
    if (isUnder(readOnly_, path))
        return failure(EROFS);
    return std::nullopt;
}

std::optional<host::Failure> MemoryFiles::nextWriteFailure() {
    ++writes_;
    if (writesUntilFailure_ > 1) {
        --writesUntilFailure_;
        return std::nullopt;
    }
    if (writesUntilFailure_ == 1)
        return failure(writeFailure_);
    return std::nullopt;
}

host::Result<std::vector<std::string>> MemoryFiles::list(const std::string& path) {
    const NodePointer node = find(path);
    if (!node)
        return failure(ENOENT);
    if (!node->isDirectory)
        return failure(ENOTDIR);
    if (isUnder(unreadable_, path))
        return failure(EACCES);
    std::vector<std::string> names;
    names.reserve(node->children.size());
    for (const auto& [name, child] : node->children)
        names.push_back(name);
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
    if (auto refused = refusesWriting(path))
        return *refused;
    const auto names = components(path);
    NodePointer node = root_;
    for (std::size_t index = 0; index < names.size(); ++index) {
        const bool last = index + 1 == names.size();
        NodePointer child = node->child(names[index]);
        if (child && last && !withIntermediates)
            return failure(EEXIST);
        if (!child) {
            if (!last && !withIntermediates)
                return failure(ENOENT);
            child = std::make_shared<Node>();
            child->isDirectory = true;
            child->modificationTime = clock_();
            node->children.emplace_back(names[index], child);
        }
        if (!child->isDirectory)
            return failure(last ? EEXIST : ENOTDIR);
        node = child;
    }
    return host::Done{};
}

host::Status MemoryFiles::createFile(const std::string& path) {
    if (auto refused = refusesWriting(path))
        return *refused;
    const NodePointer folder = folderOf(path);
    if (!folder)
        return failure(ENOENT);
    const std::string name = components(path).back();
    const NodePointer existing = folder->child(name);
    if (existing && existing->isDirectory)
        return failure(EISDIR);
    folder->erase(name);
    auto file = std::make_shared<Node>();
    file->modificationTime = clock_();
    folder->children.emplace_back(name, std::move(file));
    return host::Done{};
}

host::Result<std::unique_ptr<host::FileStream>>
MemoryFiles::openForUpdating(const std::string& path) {
    if (auto refused = refusesWriting(path))
        return *refused;
    const NodePointer node = find(path);
    if (!node)
        return failure(ENOENT);
    if (node->isDirectory)
        return failure(EISDIR);
    return std::unique_ptr<host::FileStream>(std::make_unique<Stream>(*this, node));
}

host::Status MemoryFiles::move(const std::string& from, const std::string& to) {
    for (const std::string& path : {from, to}) {
        if (auto refused = refusesWriting(path))
            return *refused;
    }
    if (const auto planned = moveFailures_.find(from); planned != moveFailures_.end())
        return failure(planned->second);
    const NodePointer source = folderOf(from);
    const NodePointer node = find(from);
    const NodePointer target = folderOf(to);
    if (!source || !node || !target)
        return failure(ENOENT);
    if (find(to))
        return failure(EEXIST);
    source->erase(components(from).back());
    target->children.emplace_back(components(to).back(), node);
    return host::Done{};
}

host::Status MemoryFiles::remove(const std::string& path) {
    if (auto refused = refusesWriting(path))
        return *refused;
    const NodePointer folder = folderOf(path);
    if (!folder || !find(path))
        return failure(ENOENT);
    folder->erase(components(path).back());
    return host::Done{};
}

host::Result<std::vector<std::byte>> MemoryFiles::read(const std::string& path) {
    const NodePointer node = find(path);
    if (!node)
        return failure(ENOENT);
    if (node->isDirectory)
        return failure(EISDIR);
    if (isUnder(unreadable_, path))
        return failure(EACCES);
    return node->bytes;
}

host::Status MemoryFiles::writeAtomically(const std::string& path,
                                          std::span<const std::byte> bytes) {
    if (auto failed = nextWriteFailure())
        return *failed;
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
    const auto names = components(path);
    putFolder(joined(names, names.size() - 1));
    (void)createFile(path);
    const auto bytes = bytesOf(contents);
    find(path)->bytes.assign(bytes.begin(), bytes.end());
}

void MemoryFiles::putFolder(const std::string& path) {
    (void)createDirectory(path, true);
}

std::optional<std::string> MemoryFiles::contents(const std::string& path) const {
    const NodePointer node = find(path);
    if (!node || node->isDirectory)
        return std::nullopt;
    std::string text(node->bytes.size(), '\0');
    std::ranges::transform(node->bytes, text.begin(),
                           [](std::byte byte) { return static_cast<char>(byte); });
    return text;
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
