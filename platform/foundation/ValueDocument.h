#pragma once
#include <atomic>
#include <cstddef>
#include <string_view>

namespace vistrel {
/// The memory that all values read from one text share: a copy of the text and the blocks of the
/// containers. It is counted by the containers that stand outside it and is freed as a whole.
class ValueDocument {
public:
    /// Zero bytes that follow the copy of the text, so that it can be scanned in wide steps.
    static constexpr std::size_t kPadding = 64;

    /// Held once by the caller.
    static ValueDocument* create(std::string_view text);
    ValueDocument(const ValueDocument&) = delete;
    ValueDocument& operator=(const ValueDocument&) = delete;

    [[nodiscard]] char* text() { return text_; }

    /// Aligned for a slot; lives as long as the document. Only before the document is shared.
    void* allocate(std::size_t size) {
        if (size > static_cast<std::size_t>(end_ - free_))
            grow(size);
        char* block = free_;
        free_ += size;
        return block;
    }

    void retain() { references_.fetch_add(1, std::memory_order_relaxed); }
    void release();

private:
    struct Chunk {
        Chunk* next;
    };

    ValueDocument() = default;
    ~ValueDocument() = default;
    void grow(std::size_t size);

    std::atomic<std::size_t> references_{1};
    Chunk* chunks_ = nullptr;
    std::size_t chunkSize_ = 0;
    char* text_ = nullptr;
    char* free_ = nullptr;
    char* end_ = nullptr;
};
}
