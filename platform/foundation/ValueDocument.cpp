#include "platform/foundation/ValueDocument.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace vistrel {
namespace {
constexpr std::size_t kSmallestArena = 1024;

std::size_t aligned(std::size_t size) {
    return (size + 15) & ~std::size_t{15};
}

void* allocated(std::size_t size) {
    void* memory = std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
}

ValueDocument* ValueDocument::create(std::string_view text) {
    const std::size_t header = aligned(sizeof(ValueDocument));
    const std::size_t textRoom = aligned(text.size() + kPadding);
    const std::size_t arena = std::max(kSmallestArena, aligned(text.size()));
    char* memory = static_cast<char*>(allocated(header + textRoom + arena));
    auto* document = new (memory) ValueDocument;
    document->text_ = memory + header;
    document->free_ = document->text_ + textRoom;
    document->end_ = document->free_ + arena;
    document->chunkSize_ = arena;
    if (!text.empty())
        std::memcpy(document->text_, text.data(), text.size());
    std::memset(document->text_ + text.size(), 0, kPadding);
    return document;
}

void ValueDocument::grow(std::size_t size) {
    const std::size_t header = aligned(sizeof(Chunk));
    // Steps so wide that the last chunk is most of the document: an allocator that adapts to the
    // largest block it has seen keeps the memory for the next document.
    chunkSize_ = std::max(chunkSize_ * 4, size);
    char* memory = static_cast<char*>(allocated(header + chunkSize_));
    chunks_ = new (memory) Chunk{chunks_};
    free_ = memory + header;
    end_ = free_ + chunkSize_;
}

void ValueDocument::release() {
    // The only holder needs no atomic write to know that it is the last.
    if (references_.load(std::memory_order_acquire) != 1 &&
        references_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    for (Chunk* chunk = chunks_; chunk;) {
        Chunk* next = chunk->next;
        std::free(chunk);
        chunk = next;
    }
    this->~ValueDocument();
    std::free(this);
}
}
