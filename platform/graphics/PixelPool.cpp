#include "platform/graphics/PixelPool.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace vistrel {

namespace {
constexpr std::size_t kKeptBytes = std::size_t{16} * 1024 * 1024;
}

PixelPool& PixelPool::shared() {
    // Lives as long as the last picture, which may be a static object.
    static auto& pool = *new PixelPool(kKeptBytes);
    return pool;
}

PixelPool::PixelPool(std::size_t limitBytes)
    : limitBytes_(limitBytes) {}

PixelPool::~PixelPool() {
    for (auto& [size, blocks] : kept_)
        for (auto* block : blocks)
            std::free(block);
}

std::size_t PixelPool::bytesKept() const {
    const std::lock_guard lock(mutex_);
    return bytesKept_;
}

std::uint32_t* PixelPool::takeKept(std::size_t pixels) {
    const std::lock_guard lock(mutex_);
    const auto found = kept_.find(pixels);
    if (found == kept_.end() || found->second.empty())
        return nullptr;
    auto* memory = found->second.back();
    found->second.pop_back();
    bytesKept_ -= pixels * sizeof(std::uint32_t);
    return memory;
}

std::uint32_t* PixelPool::take(std::size_t pixels) {
    if (auto* memory = takeKept(pixels)) {
        std::memset(memory, 0, pixels * sizeof(std::uint32_t));
        return memory;
    }
    auto* memory = static_cast<std::uint32_t*>(std::calloc(pixels, sizeof(std::uint32_t)));
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void PixelPool::giveBack(std::uint32_t* memory, std::size_t pixels) {
    const std::size_t bytes = pixels * sizeof(std::uint32_t);
    const std::lock_guard lock(mutex_);
    if (bytesKept_ + bytes > limitBytes_) {
        std::free(memory);
        return;
    }
    kept_[pixels].push_back(memory);
    bytesKept_ += bytes;
}

}
