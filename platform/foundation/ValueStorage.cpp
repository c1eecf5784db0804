#include "platform/foundation/ValueStorage.h"

#include "platform/foundation/DecimalText.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>
#include <vector>

namespace vistrel::valueStorage {
namespace {
using Holding = ValueSlot::Holding;

void* checked(void* memory) {
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

ValueBlock* newBlock(ValueKind kind, std::size_t capacity, ValueDocument* document) {
    void* memory = checked(std::malloc(ValueBlock::byteSize(kind, capacity)));
    return new (memory) ValueBlock{document, capacity};
}

/// Copies of everything but the owned containers, which are left to the caller.
ValueSlot copiedButOwnedContainers(const ValueSlot& slot) {
    if (!slot.isExternal() || (slot.isContainer() && !slot.isShared()))
        return slot;
    if (!slot.isContainer())
        return ownedText(slot.kind(), slot.text());
    ValueBlock::of(slot.slots())->document->retain();
    return slot;
}

ValueBlock* copiedBlock(const ValueSlot& container) {
    const ValueKind kind = container.kind();
    ValueBlock* block = newBlock(kind, container.size(), nullptr);
    std::transform(container.slots(), container.slots() + container.slotCount(), block->slots(),
                   copiedButOwnedContainers);
    const auto copy = ValueSlot::external(kind, block->slots(), container.size(), Holding::Owned);
    if (kind == ValueKind::Dictionary)
        valueMembers::rebuildIndex(copy);
    return block;
}

/// Whether two slots are equal as far as can be said without their elements.
bool shellsAreEqual(const ValueSlot& a, const ValueSlot& b) {
    if (a.kind() != b.kind())
        return false;
    switch (a.kind()) {
    case ValueKind::Null:
        return true;
    case ValueKind::Boolean:
        return a.scalar<bool>() == b.scalar<bool>();
    case ValueKind::Date:
        return a.scalar<double>() == b.scalar<double>();
    case ValueKind::Number:
        return decimalTextsAreEqual(a.text(), b.text());
    case ValueKind::String:
    case ValueKind::Data:
        return a.text() == b.text();
    case ValueKind::Array:
    case ValueKind::Dictionary:
        break;
    }
    return a.size() == b.size();
}

using Pairs = std::vector<std::pair<const ValueSlot*, const ValueSlot*>>;

/// Compares the elements of two containers of one size; containers among them are put off.
bool elementsAreEqual(const ValueSlot& a, const ValueSlot& b, Pairs& putOff) {
    const bool isDictionary = a.kind() == ValueKind::Dictionary;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const ValueSlot* left = a.slots() + i;
        const ValueSlot* right = b.slots() + i;
        if (isDictionary) {
            left = a.slots() + 2 * i;
            const std::size_t place = valueMembers::find(b, left->text());
            if (place == valueMembers::kAbsent)
                return false;
            ++left;
            right = b.slots() + 2 * place + 1;
        }
        if (!shellsAreEqual(*left, *right))
            return false;
        if (left->isContainer() && left->slots() != right->slots())
            putOff.emplace_back(left, right);
    }
    return true;
}
}

ValueSlot ownedText(ValueKind kind, std::string_view text) {
    if (text.size() <= ValueSlot::kInlineCapacity)
        return ValueSlot::inlineText(kind, text);
    void* copy = checked(std::malloc(text.size()));
    std::memcpy(copy, text.data(), text.size());
    return ValueSlot::external(kind, copy, text.size(), Holding::Owned);
}

ValueSlot copied(const ValueSlot& slot) {
    ValueSlot copy = copiedButOwnedContainers(slot);
    std::vector<ValueSlot*> containers;
    const auto noteOwnedContainer = [&](ValueSlot& candidate) {
        if (candidate.isContainer() && candidate.isExternal() && !candidate.isShared())
            containers.push_back(&candidate);
    };
    noteOwnedContainer(copy);
    while (!containers.empty()) {
        ValueSlot& container = *containers.back();
        containers.pop_back();
        ValueBlock* block = copiedBlock(container);
        container =
            ValueSlot::external(container.kind(), block->slots(), container.size(), Holding::Owned);
        std::for_each(block->slots(), block->slots() + container.slotCount(), noteOwnedContainer);
    }
    return copy;
}

namespace {
/// Frees a slot's own memory, except that an owned container's block is put on a list that is
/// linked through the blocks themselves: destroying must need neither stack nor memory.
void releaseOrList(const ValueSlot& slot, ValueBlock*& list) {
    if (!slot.isExternal())
        return;
    if (!slot.isContainer()) {
        std::free(const_cast<char*>(slot.text().data()));
        return;
    }
    ValueBlock* block = ValueBlock::of(slot.slots());
    if (block->document)
        block->document->release();
    if (slot.isShared())
        return;
    block->capacity = slot.slotCount();
    block->document = reinterpret_cast<ValueDocument*>(list);
    list = block;
}
}

void destroy(ValueSlot& slot) {
    ValueBlock* list = nullptr;
    releaseOrList(slot, list);
    slot = ValueSlot::empty(slot.kind());
    while (list) {
        ValueBlock* block = list;
        list = reinterpret_cast<ValueBlock*>(block->document);
        for (std::size_t i = 0; i < block->capacity; ++i)
            releaseOrList(block->slots()[i], list);
        std::free(block);
    }
}

void open(ValueSlot& container) {
    if (!container.isShared())
        return;
    ValueDocument* document = ValueBlock::of(container.slots())->document;
    ValueBlock* block = copiedBlock(container);
    block->document = document;
    container =
        ValueSlot::external(container.kind(), block->slots(), container.size(), Holding::Owned);
}

void reserve(ValueSlot& container, std::size_t capacity) {
    const ValueKind kind = container.kind();
    ValueBlock* block = nullptr;
    std::size_t size = 0;
    if (container.isExternal()) {
        block = ValueBlock::of(container.slots());
        size = container.size();
        if (block->capacity >= capacity)
            return;
        void* memory = std::realloc(block, ValueBlock::byteSize(kind, capacity));
        block = static_cast<ValueBlock*>(checked(memory));
        block->capacity = capacity;
    } else if (capacity != 0) {
        block = newBlock(kind, capacity, nullptr);
    } else {
        return;
    }
    container = ValueSlot::external(kind, block->slots(), size, Holding::Owned);
    if (kind == ValueKind::Dictionary)
        valueMembers::rebuildIndex(container);
}

void makeRoom(ValueSlot& container) {
    constexpr std::size_t kFirstCapacity = 4;
    if (!container.isExternal())
        reserve(container, kFirstCapacity);
    else if (container.size() == ValueBlock::of(container.slots())->capacity)
        reserve(container, std::max(kFirstCapacity, container.size() * 2));
}

bool areEqual(const ValueSlot& a, const ValueSlot& b) {
    if (!shellsAreEqual(a, b))
        return false;
    Pairs containers;
    if (a.isContainer() && a.slots() != b.slots())
        containers.emplace_back(&a, &b);
    while (!containers.empty()) {
        const auto [left, right] = containers.back();
        containers.pop_back();
        if (!elementsAreEqual(*left, *right, containers))
            return false;
    }
    return true;
}
}
