#pragma once
#include "ads/json/GAD_ZelJSONError.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace vistrel {
/// The ad library's JSON reader and writer.
///
/// Reading is strict about values but accepts all standard white space and missing commas between
/// members or elements. Numbers keep their exact text and are not checked for range. Texts must be
/// valid UTF-8. Neither direction recurses: with `maxDepth` 0, any nesting that fits into memory is
/// read and written.
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

    /// Reads a text that contains an object or an array; a missing text is also an error.
    [[nodiscard]] Reading objectWithString(std::optional<std::string_view> text) const;
    /// Reads a text that contains any value.
    [[nodiscard]] Reading fragmentWithString(std::optional<std::string_view> text) const;

    /// Writes a dictionary or an array.
    [[nodiscard]] Writing stringWithObject(const Value& object) const;
    /// Writes any value. Dates and data are written as strings.
    [[nodiscard]] Writing stringWithFragment(const Value& fragment) const;

    /// Writes one member or element per line, indented by two blanks per level.
    [[nodiscard]] bool humanReadable() const { return humanReadable_; }
    void setHumanReadable(bool humanReadable) { humanReadable_ = humanReadable; }

    /// Writes keys in ascending order instead of the dictionary's order.
    [[nodiscard]] bool sortKeys() const { return sortKeys_; }
    void setSortKeys(bool sortKeys) { sortKeys_ = sortKeys; }

    /// How deeply containers may be nested when reading; 0 for no limit.
    [[nodiscard]] unsigned maxDepth() const { return maxDepth_; }
    void setMaxDepth(unsigned maxDepth) { maxDepth_ = maxDepth; }

private:
    bool humanReadable_ = false;
    bool sortKeys_ = false;
    unsigned maxDepth_ = 512;
};
}
