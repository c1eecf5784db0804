#pragma once
#include "ads/json/GAD_ZelJSONBuffer.h"
#include "platform/foundation/Value.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel {
/// Writes one value, once. Keeps open containers on an explicit stack.
class GAD_ZelJSONWriter {
public:
    struct Layout {
        bool humanReadable = false;
        bool sortKeys = false;
    };

    explicit GAD_ZelJSONWriter(Layout layout)
        : layout_(layout) {}

    [[nodiscard]] std::string write(const Value& value);

private:
    using Member = std::pair<std::string_view, const Value*>;

    /// A container that is being written: its remaining part.
    struct Frame {
        const Value* element;
        Value::Dictionary::ConstIterator member;
        std::size_t left;
        bool isDictionary;
        bool isFirst;
    };

    bool writeScalar(const Value& value);
    void writeElements();
    void writeMembers();
    void writeSortedMembers();
    bool writeMember(Frame& frame, std::string_view key, const Value& value);
    void separate(Frame& frame);
    void open(const Value& container);
    void close();
    void breakLine();

    Layout layout_;
    GAD_ZelJSONBuffer out_;
    std::vector<Frame> frames_;
    /// The open dictionaries' remaining members, the next one last.
    std::vector<Member> sorted_;
};
}
