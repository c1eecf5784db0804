#pragma once
#include <taglib/tiostream.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vistrel {

/// An open file for the tag library to read, never to write. Reads a window at a time: tags and
/// properties stand close together at both ends of a file, and each system call is dear. A file in
/// which nothing is found is given up after a while instead of being searched to its end: from then
/// on it reads as empty.
class BufferedFile : public TagLib::IOStream {
public:
    /// 0, or why the file cannot be read: the system's code. What is no regular file is not read.
    int open(const std::string& path);
    BufferedFile() = default;
    ~BufferedFile() override;
    BufferedFile(const BufferedFile&) = delete;
    BufferedFile& operator=(const BufferedFile&) = delete;

    /// Copies up to `count` bytes from an offset; how many there were.
    std::size_t read(long offset, std::size_t count, char* to);

    /// Lets the tag library go by the content instead of the name.
    void forgetName() { path_.clear(); }

    TagLib::FileName name() const override { return path_.c_str(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return file_ >= 0; }
    void seek(long offset, Position from) override;
    long tell() const override { return position_; }
    long length() override { return size_; }
    void truncate(long) override {}

private:
    bool isInWindow(long offset, std::size_t count) const;
    void moveWindowTo(long offset);

    std::string path_;
    bool isGivenUp();

    int file_ = -1;
    long size_ = 0;
    long position_ = 0;
    long windowOffset_ = 0;
    std::vector<char> window_;
    double startedAt_ = 0; ///< seconds of this thread's processor time
    unsigned blocks_ = 0;
};

}
