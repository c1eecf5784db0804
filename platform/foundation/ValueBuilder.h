#pragma once
#include "platform/foundation/Value.h"
#include "platform/foundation/ValueStorage.h"

#include <array>
#include <string_view>

namespace vistrel {
/// Builds a tree of values over one text, from its leaves up. Strings and numbers are not copied:
/// they point into the builder's copy of the text, which the finished values share and which is
/// freed with the last of them. Used by readers of text formats; checks nothing in release builds.
class ValueBuilder {
public:
    /// Copies the text. At least ValueDocument::kPadding zero bytes follow the copy.
    explicit ValueBuilder(std::string_view text);
    ValueBuilder(const ValueBuilder&) = delete;
    ValueBuilder& operator=(const ValueBuilder&) = delete;
    /// Frees everything that finish() has not handed out.
    ~ValueBuilder();

    /// The copy of the text. It may be changed where no value points to it yet.
    [[nodiscard]] char* text() { return document_->text(); }

    void pushNull() { push(ValueSlot::empty(ValueKind::Null)); }
    void pushBoolean(bool boolean) { push(ValueSlot::scalar(ValueKind::Boolean, boolean)); }
    /// Both must lie in the copy of the text.
    void pushNumber(std::string_view text) { pushText(ValueKind::Number, text); }
    void pushString(std::string_view text) { pushText(ValueKind::String, text); }

    /// What is pushed until the matching close() are elements, or keys (as strings) and values in
    /// turn; a later member replaces an earlier one with the same key.
    void openArray() { openContainer(ValueKind::Array); }
    void openDictionary() { openContainer(ValueKind::Dictionary); }
    void close();
    /// Drops the innermost open container with all that was pushed into it.
    void abandon() {
        used_ = frame_;
        frame_ = stack_[frame_].size();
        --openContainers_;
    }

    /// How many containers are open.
    [[nodiscard]] std::size_t openContainers() const { return openContainers_; }
    [[nodiscard]] bool isInDictionary() const {
        return openContainers_ != 0 && stack_[frame_].kind() == ValueKind::Dictionary;
    }
    /// The string that was pushed last; to name a key whose value is bad.
    [[nodiscard]] std::string_view lastString() const { return stack_[used_ - 1].text(); }

    /// The one value that was pushed, once every container is closed. The builder is used up.
    [[nodiscard]] Value finish();

private:
    static constexpr std::size_t kFirstStackSize = 128;

    void push(const ValueSlot& slot) {
        if (used_ == stackSize_)
            growStack();
        stack_[used_++] = slot;
    }
    void pushText(ValueKind kind, std::string_view text) {
        push(ValueSlot::external(kind, text.data(), text.size(), ValueSlot::Holding::Shared));
    }
    void openContainer(ValueKind kind) {
        push(ValueSlot::external(kind, nullptr, frame_, ValueSlot::Holding::Shared));
        frame_ = used_ - 1;
        ++openContainers_;
    }
    void growStack();

    std::array<ValueSlot, kFirstStackSize> firstStack_;
    ValueDocument* document_;
    ValueSlot* stack_;
    std::size_t stackSize_ = kFirstStackSize;
    std::size_t used_ = 0;
    /// Where the innermost open container's slot stands; its size field names the one around it.
    std::size_t frame_ = 0;
    std::size_t openContainers_ = 0;
};
}
