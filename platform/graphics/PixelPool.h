#pragma once
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

namespace vistrel {

/// Pixel memory for pictures. Released memory is kept for the next picture of that size, up to a
/// limit, because touching fresh pages costs more than clearing used ones. Thread-safe.
class PixelPool {
public:
    static PixelPool& shared();

    explicit PixelPool(std::size_t limitBytes);
    ~PixelPool();
    PixelPool(const PixelPool&) = delete;
    PixelPool& operator=(const PixelPool&) = delete;

    /// All zero.
    std::uint32_t* take(std::size_t pixels);
    void giveBack(std::uint32_t* memory, std::size_t pixels);
    std::size_t bytesKept() const;

private:
    std::uint32_t* takeKept(std::size_t pixels);

    mutable std::mutex mutex_;
    std::size_t limitBytes_;
    std::size_t bytesKept_ = 0;
    std::map<std::size_t, std::vector<std::uint32_t*>> kept_;
};

}
