#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vistrel::demo {

/// The bytes of a response: a text in memory, or a pattern of any size that needs none.
/// Copies are cheap and share the bytes.
class Body {
public:
    Body() = default;
    explicit Body(std::string text);
    explicit Body(std::shared_ptr<const std::string> text);

    /// Reproducible pseudo-random bytes; no two of the first 4096 mebibytes are equal.
    static Body pattern(uint64_t size);

    uint64_t size() const { return size_; }

    /// The bytes from `offset` on that are contiguous in memory: never empty inside the body, and
    /// valid for as long as the body (or a copy) lives.
    std::string_view at(uint64_t offset) const;

    /// The `size` bytes from `offset` on; both must be inside the body.
    Body part(uint64_t offset, uint64_t size) const;

    /// All bytes in one piece. Copies them, so not for large patterns.
    std::string text() const;

private:
    std::shared_ptr<const std::string> text_; ///< null for a pattern
    uint64_t start_ = 0;
    uint64_t size_ = 0;
};
}
