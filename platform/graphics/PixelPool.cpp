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
    for (auto& [size, blocks] : kept_) {
        for (auto* block : blocks) {
            std::free(block);
        }
    }
}

std::uint32_t* PixelPool::take(std::size_t pixels) {
    const std::size_t bytes = pixels * sizeof(std::uint32_t);
    if (const auto found = kept_.find(pixels); found != kept_.end() && !found->second.empty()) {
        auto* memory = found->second.back();
        found->second.pop_back();
        bytesKept_ -= bytes;
        std::memset(memory, 0, bytes);
        return memory;
    }
    auto* memory = static_cast<std::uint32_t*>(std::calloc(pixels, sizeof(std::uint32_t)));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void PixelPool::giveBack(std::uint32_t* memory, std::size_t pixels) {
    const std::size_t bytes = pixels * sizeof(std::uint32_t);
    if (bytesKept_ + bytes > limitBytes_) {
        std::free(memory);
        return;
    }
    kept_[pixels].push_back(memory);
    bytesKept_ += bytes;
}

}
