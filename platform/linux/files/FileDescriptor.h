#pragma once
#include <unistd.h>

#include <utility>

namespace vistrel {

/// Owns an open file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number)
        : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() {
        if (number_ >= 0)
            ::close(number_);
    }

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    int release() { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

}
