#pragma once
#include <taglib/taglib.h>
#include <taglib/tiostream.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vistrel {

/// The tag library's types, which its second version changed.
#if TAGLIB_MAJOR_VERSION >= 2
using TagOffset = TagLib::offset_t;
using TagStart = TagLib::offset_t;
using TagLength = std::size_t;
#else
using TagOffset = long;
using TagStart = unsigned long;
using TagLength = unsigned long;
#endif

/// An open file for the tag library, read-only. Reads a window at a time, because tags and
/// properties are close together at both ends of a file and system calls are slow. A file in which
/// nothing is found is not searched to its end: after some time it reads as empty.
class BufferedFile : public TagLib::IOStream {
public:
    /// 0, or the system's error code if the file cannot be read. Only regular files are read.
    int open(const std::string& path);
    BufferedFile() = default;
    ~BufferedFile() override;
    BufferedFile(const BufferedFile&) = delete;
    BufferedFile& operator=(const BufferedFile&) = delete;

    /// Copies up to `count` bytes from an offset and returns how many there were.
    std::size_t read(long offset, std::size_t count, char* to);

    /// Makes the tag library recognise files by content instead of name.
    void forgetName() { path_.clear(); }

    TagLib::FileName name() const override { return path_.c_str(); }
    TagLib::ByteVector readBlock(TagLength length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, TagStart, TagLength) override {}
    void removeBlock(TagStart, TagLength) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return file_ >= 0; }
    void seek(TagOffset offset, Position from) override;
    TagOffset tell() const override { return position_; }
    TagOffset length() override { return size_; }
    void truncate(TagOffset) override {}

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
    double startedAt_ = 0; ///< in seconds of this thread's processor time
    unsigned blocks_ = 0;
};

}
