#pragma once
#include "ads/json/GAD_ZelJSONScan.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vistrel {
/// The JSON writer's growing output.
class GAD_ZelJSONBuffer {
public:
    /// The room that every function leaves after its output.
    static constexpr std::size_t kSlack = 32;

    GAD_ZelJSONBuffer() { grow(0); }
    GAD_ZelJSONBuffer(const GAD_ZelJSONBuffer&) = delete;
    GAD_ZelJSONBuffer& operator=(const GAD_ZelJSONBuffer&) = delete;
    ~GAD_ZelJSONBuffer();

    /// Appends a character for which there is slack.
    void putWithinSlack(char c) { *at_++ = c; }
    void makeSlack() { makeRoom(0); }
    void put(std::string_view text) {
        makeRoom(text.size());
        // A call would cost more than copying these few bytes.
        if (text.size() < 16)
            jsonScan::copyShortPlain(at_, text.data(), text.size());
        else
            std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
    }
    void putBlanks(std::size_t count);
    /// Appends the text as a JSON string.
    void putQuoted(std::string_view text) {
        makeRoom(text.size() + 2);
        *at_++ = '"';
        if (text.size() < 16 && jsonScan::copyShortPlain(at_, text.data(), text.size())) {
            at_ += text.size();
            *at_++ = '"';
        } else {
            putLong(text);
        }
    }

    [[nodiscard]] std::string text() const {
        return {begin_, static_cast<std::size_t>(at_ - begin_)};
    }

private:
    /// Ensures room for a text of this size and the slack after it.
    void makeRoom(std::size_t size) {
        if (static_cast<std::size_t>(end_ - at_) < size + kSlack)
            grow(size);
    }
    void grow(std::size_t size);
    void putLong(std::string_view text);
    void putEscaped(std::string_view text);

    char* begin_ = nullptr;
    char* at_ = nullptr;
    char* end_ = nullptr;
};
}
