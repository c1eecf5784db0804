#include "ads/json/GAD_ZelJSONWriter.h"

#include "ads/json/GAD_ZelJSONDescription.h"

#include <algorithm>

namespace vistrel {
namespace {
/// The order of the texts' UTF-16 units, which is that of the bytes but for characters beyond the
/// basic plane: their surrogates come before U+E000.
bool isBefore(std::string_view a, std::string_view b) {
    const auto [left, right] = std::ranges::mismatch(a, b);
    if (left == a.end() || right == b.end())
        return left == a.end() && right != b.end();
    const auto rank = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0xF0 ? 2 * 0xED + 1 : 2 * byte;
    };
    return rank(*left) != rank(*right)
               ? rank(*left) < rank(*right)
               : static_cast<unsigned char>(*left) < static_cast<unsigned char>(*right);
}
}

std::string GAD_ZelJSONWriter::write(const Value& value) {
    writeValue(value);
    while (!frames_.empty()) {
        if (frames_.back().left == 0)
            close();
        else
            writeNext(frames_.back());
    }
    return out_.take();
}

void GAD_ZelJSONWriter::writeValue(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        out_.put("null");
        break;
    case Value::Kind::Boolean:
        out_.put(value.boolean() ? "true" : "false");
        break;
    case Value::Kind::Number:
        out_.put(value.numberText());
        break;
    case Value::Kind::String:
        out_.putQuoted(value.string());
        break;
    case Value::Kind::Date:
    case Value::Kind::Data:
        out_.putQuoted(zelJSONDescription(value));
        break;
    case Value::Kind::Array:
    case Value::Kind::Dictionary:
        open(value);
        break;
    }
}

void GAD_ZelJSONWriter::open(const Value& container) {
    const bool isDictionary = container.isDictionary();
    out_.makeRoom(0);
    out_.put(isDictionary ? '{' : '[');
    const Value::Dictionary& members = container.dictionary();
    const Value::Array& elements = container.array();
    frames_.push_back({.element = elements.begin(),
                       .member = members.begin(),
                       .left = isDictionary ? members.size() : elements.size(),
                       .isDictionary = isDictionary,
                       .isFirst = true});
    if (!isDictionary || !layout_.sortKeys)
        return;
    for (const auto& [key, value] : members)
        sorted_.emplace_back(key, &value);
    std::sort(sorted_.end() - static_cast<std::ptrdiff_t>(members.size()), sorted_.end(),
              [](const Member& a, const Member& b) { return isBefore(b.first, a.first); });
}

void GAD_ZelJSONWriter::close() {
    const Frame frame = frames_.back();
    frames_.pop_back();
    if (!frame.isFirst)
        breakLine();
    out_.makeRoom(0);
    out_.put(frame.isDictionary ? '}' : ']');
}

void GAD_ZelJSONWriter::writeNext(Frame& frame) {
    out_.makeRoom(0);
    if (!frame.isFirst)
        out_.put(',');
    frame.isFirst = false;
    --frame.left;
    breakLine();
    if (!frame.isDictionary) {
        writeValue(*frame.element++);
    } else if (layout_.sortKeys) {
        writeSmallest();
    } else {
        const auto [key, value] = *frame.member++;
        writeMember(key, value);
    }
}

void GAD_ZelJSONWriter::writeSmallest() {
    const auto [key, value] = sorted_.back();
    sorted_.pop_back();
    writeMember(key, *value);
}

void GAD_ZelJSONWriter::writeMember(std::string_view key, const Value& value) {
    out_.putQuoted(key);
    out_.put(layout_.humanReadable ? " : " : ":");
    writeValue(value);
}

void GAD_ZelJSONWriter::breakLine() {
    if (!layout_.humanReadable)
        return;
    out_.makeRoom(0);
    out_.put('\n');
    out_.putBlanks(2 * frames_.size());
}
}
