#include "demo/Body.h"

#include <algorithm>
#include <utility>

namespace vistrel::demo {
namespace {
constexpr uint64_t blockSize = 1024ULL * 1024;
constexpr uint64_t shifts = 4099;

// Every block of a pattern is a window into these bytes at another offset, so that a
// receiver that loses or swaps blocks is detected, and sending computes nothing.
const std::string& patternBytes() {
    static const std::string bytes = [] {
        std::string made(blockSize + shifts, '\0');
        uint64_t state = 0x9e3779b97f4a7c15ULL;
        for (char& byte : made) {
            state ^= state << 13U;
            state ^= state >> 7U;
            state ^= state << 17U;
            byte = static_cast<char>(state >> 32U);
        }
        return made;
    }();
    return bytes;
}
}

Body::Body(std::string text)
    : Body(std::make_shared<const std::string>(std::move(text))) {}

Body::Body(std::shared_ptr<const std::string> text)
    : text_(std::move(text))
    , size_(text_->size()) {}

Body Body::pattern(uint64_t size) {
    Body body;
    body.size_ = size;
    return body;
}

std::string_view Body::at(uint64_t offset) const {
    if (offset >= size_)
        return {};
    const uint64_t position = start_ + offset;
    const uint64_t left = size_ - offset;
    if (text_)
        return std::string_view(*text_).substr(position, left);
    const uint64_t inside = position % blockSize;
    const uint64_t window = (position / blockSize) * 61 % shifts;
    return std::string_view(patternBytes())
        .substr(window + inside, std::min(left, blockSize - inside));
}

Body Body::part(uint64_t offset, uint64_t size) const {
    Body piece = *this;
    piece.start_ += offset;
    piece.size_ = size;
    return piece;
}

std::string Body::text() const {
    std::string all;
    all.reserve(size_);
    for (uint64_t offset = 0; offset < size_; offset += at(offset).size())
        all += at(offset);
    return all;
}
}
