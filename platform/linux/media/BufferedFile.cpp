#include "platform/linux/media/BufferedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace vistrel {

namespace {

constexpr std::size_t kWindow = 8192;
constexpr double kMostSeconds = 0.03;
constexpr unsigned kBlocksBetweenLooks = 16;

double processorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Reads as many bytes as there are, despite interruptions by signals.
std::size_t readFully(int file, long offset, std::size_t count, char* to) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got =
            ::pread(file, to + done, count - done, offset + static_cast<long>(done));
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

}

BufferedFile::~BufferedFile() {
    if (file_ >= 0)
        ::close(file_);
}

int BufferedFile::open(const std::string& path) {
    path_ = path;
    file_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status {};
    if (file_ < 0 || ::fstat(file_, &status) != 0)
        return errno;
    if (S_ISDIR(status.st_mode))
        return EISDIR;
    size_ = status.st_size;
    startedAt_ = processorSeconds();
    return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

bool BufferedFile::isInWindow(long offset, std::size_t count) const {
    return offset >= windowOffset_ &&
           static_cast<std::size_t>(offset - windowOffset_) + count <= window_.size();
}

/// Near the end of the file, the window extends backwards so that one read covers the end.
void BufferedFile::moveWindowTo(long offset) {
    constexpr long kLength = kWindow;
    windowOffset_ = std::clamp(offset, 0L, std::max(size_ - kLength, 0L));
    window_.resize(kWindow);
    window_.resize(readFully(file_, windowOffset_, kWindow, window_.data()));
}

std::size_t BufferedFile::read(long offset, std::size_t count, char* to) {
    if (offset < 0 || offset >= size_)
        return 0;
    count = std::min(count, static_cast<std::size_t>(size_ - offset));
    if (count > kWindow)
        return readFully(file_, offset, count, to);
    if (!isInWindow(offset, count))
        moveWindowTo(offset);
    if (!isInWindow(offset, count)) // the file has shrunk in the meantime
        return readFully(file_, offset, count, to);
    std::copy_n(window_.begin() + (offset - windowOffset_), count, to);
    return count;
}

bool BufferedFile::isGivenUp() {
    if (++blocks_ % kBlocksBetweenLooks == 0 && processorSeconds() - startedAt_ > kMostSeconds)
        size_ = 0;
    return size_ == 0;
}

TagLib::ByteVector BufferedFile::readBlock(TagLength length) {
    if (isGivenUp() || position_ < 0 || position_ >= size_)
        return {};
    const auto count = std::min(length, static_cast<TagLength>(size_ - position_));
    TagLib::ByteVector bytes(static_cast<unsigned>(count));
    const std::size_t got = read(position_, count, bytes.data());
    bytes.resize(static_cast<unsigned>(got));
    position_ += static_cast<long>(got);
    return bytes;
}

void BufferedFile::seek(TagOffset offset, Position from) {
    if (from == Current)
        offset += position_;
    else if (from == End)
        offset += size_;
    position_ = std::max(offset, TagOffset{0});
}

}
