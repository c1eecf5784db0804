#pragma once
#include "ads/json/GAD_ZelJSONScan.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vistrel {
/// The one growing text that the JSON writer writes into.
class GAD_ZelJSONBuffer {
public:
    /// What the writer may put without asking for room again.
    static constexpr std::size_t kSlack = 32;

    GAD_ZelJSONBuffer() { grow(0); }

    /// Room for a text of that size and kSlack more bytes.
    void makeRoom(std::size_t size) {
        if (static_cast<std::size_t>(end_ - at_) < size + kSlack)
            grow(size);
    }
    void put(char c) { *at_++ = c; }
    void put(std::string_view text) {
        makeRoom(text.size());
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
    }
    /// Room must have been made.
    void putShort(std::string_view text) {
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
    }
    void putBlanks(std::size_t count);
    /// The text as a JSON string; leaves kSlack bytes of room behind it.
    void putQuoted(std::string_view text);

    [[nodiscard]] std::string take();

private:
    void grow(std::size_t size);
    void putEscaped(std::string_view text);

    std::string text_;
    char* at_ = nullptr;
    char* end_ = nullptr;
};
}
