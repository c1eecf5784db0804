#pragma once
#include "platform/foundation/ValueBuilder.h"

#include <string_view>

namespace vistrel {

/// Reads one query, once, in one pass over a copy of its text that the values share; escapes are
/// undone in place.
class GADQueryReader {
public:
    explicit GADQueryReader(std::string_view query);

    Value::Dictionary read();

private:
    /// What stands in a part that a plain copy of it would get wrong; several at once.
    using Marks = unsigned;

    /// A key or a value in the text.
    struct Part {
        char* begin;
        char* end;
        Marks marks;
    };

    /// Reads the piece that begins there; the place of the separator behind it.
    char* piece(char* at);
    void addMember(Part key, Part value);
    /// Undoes the escapes; whether that was possible and the result is UTF-8.
    static bool unescape(Part& part);

    ValueBuilder builder_;
    char* end_;
};

}
