#pragma once
#include "ads/json/GAD_ZelJSONError.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace vistrel {
/// The ad library's JSON reader and writer.
///
/// Reading is strict about values but takes white space of the whole standard class, and members
/// or elements without a comma between them. Numbers keep their exact text and are not checked for
/// range. A text is expected to be valid UTF-8. Neither direction recurses: with `maxDepth` 0 any
/// nesting that fits into memory is read and written.
class GAD_ZelJSON {
public:
    /// Either the value or the error that stopped the reader.
    struct Reading {
        std::optional<Value> value;
        GAD_ZelJSONErrorPointer error;
    };
    /// Either the text or the error that stopped the writer.
    struct Writing {
        std::optional<std::string> text;
        GAD_ZelJSONErrorPointer error;
    };

    /// Reads a text that contains an object or an array; a missing text is an error, too.
    [[nodiscard]] Reading objectWithString(std::optional<std::string_view> text) const;
    /// Reads a text that contains any value.
    [[nodiscard]] Reading fragmentWithString(std::optional<std::string_view> text) const;

    /// Writes a dictionary or an array.
    [[nodiscard]] Writing stringWithObject(const Value& object) const;
    /// Writes any value. A date and data become strings of their descriptions.
    [[nodiscard]] Writing stringWithFragment(const Value& fragment) const;

    /// One member or element a line, indented by two blanks a level.
    [[nodiscard]] bool humanReadable() const { return humanReadable_; }
    void setHumanReadable(bool humanReadable) { humanReadable_ = humanReadable; }

    /// Keys in ascending order instead of the dictionary's own.
    [[nodiscard]] bool sortKeys() const { return sortKeys_; }
    void setSortKeys(bool sortKeys) { sortKeys_ = sortKeys; }

    /// How deep containers may be nested in a text that is read; 0 for no limit.
    [[nodiscard]] unsigned maxDepth() const { return maxDepth_; }
    void setMaxDepth(unsigned maxDepth) { maxDepth_ = maxDepth; }

private:
    bool humanReadable_ = false;
    bool sortKeys_ = false;
    unsigned maxDepth_ = 512;
};
}
