#include "platform/foundation/ValueBuilder.h"

#include <cstdlib>
#include <new>

namespace vistrel {
ValueBuilder::ValueBuilder(std::string_view text)
    : document_(ValueDocument::create(text))
    , stack_(firstStack_.data()) {}

ValueBuilder::~ValueBuilder() {
    if (document_)
        document_->release();
    if (stack_ != firstStack_.data())
        std::free(stack_);
}

void ValueBuilder::growStack() {
    const std::size_t bytes = stackSize_ * 2 * sizeof(ValueSlot);
    const bool first = stack_ == firstStack_.data();
    void* memory = first ? std::malloc(bytes) : std::realloc(stack_, bytes);
    if (!memory)
        throw std::bad_alloc();
    if (first)
        std::memcpy(memory, stack_, stackSize_ * sizeof(ValueSlot));
    stack_ = static_cast<ValueSlot*>(memory);
    stackSize_ *= 2;
}

void ValueBuilder::close() {
    const std::size_t outer = stack_[frame_].size();
    const ValueKind kind = stack_[frame_].kind();
    const ValueSlot* content = stack_ + frame_ + 1;
    const std::size_t slots = used_ - frame_ - 1;
    used_ = frame_ + 1;
    frame_ = outer;
    --openContainers_;
    if (slots == 0) {
        stack_[used_ - 1] = ValueSlot::empty(kind);
        return;
    }
    std::size_t size = kind == ValueKind::Dictionary ? slots / 2 : slots;
    auto* block = static_cast<ValueBlock*>(
        document_->allocate((ValueBlock::byteSize(kind, size) + 15) & ~std::size_t{15}));
    block->document = document_;
    block->capacity = size;
    std::memcpy(static_cast<void*>(block->slots()), content, slots * sizeof(ValueSlot));
    if (kind == ValueKind::Dictionary)
        size = valueMembers::mergeDuplicates(block->slots(), size);
    stack_[used_ - 1] = ValueSlot::external(kind, block->slots(), size, ValueSlot::Holding::Shared);
}

Value ValueBuilder::finish() {
    const ValueSlot& root = stack_[0];
    Value value;
    if (root.isContainer() && root.isExternal()) {
        document_ = nullptr;
        value.slot_ = root;
    } else {
        value.slot_ = valueStorage::copied(root);
    }
    return value;
}
}
