#include "ads/json/GAD_ZelJSONWriter.h"

#include "ads/json/GAD_ZelJSONDescription.h"

#include <algorithm>

namespace vistrel {
namespace {
/// Compares by UTF-16 units. This is the order of the bytes except for characters beyond the basic
/// plane, whose surrogates come before U+E000.
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
    if (!writeScalar(value))
        open(value);
    while (!frames_.empty())
        if (frames_.back().left == 0)
            close();
        else if (!frames_.back().isDictionary)
            writeElements();
        else if (layout_.sortKeys)
            writeSortedMembers();
        else
            writeMembers();
    return out_.text();
}

/// Writes any value but a container; returns whether it did.
inline bool GAD_ZelJSONWriter::writeScalar(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::String:
        out_.putQuoted(value.string());
        return true;
    case Value::Kind::Number:
        out_.put(value.numberText());
        return true;
    case Value::Kind::Boolean:
        out_.put(value.boolean() ? "true" : "false");
        return true;
    case Value::Kind::Null:
        out_.put("null");
        return true;
    case Value::Kind::Date:
    case Value::Kind::Data:
        out_.putQuoted(zelJSONDescription(value));
        return true;
    case Value::Kind::Array:
    case Value::Kind::Dictionary:
        break;
    }
    return false;
}

/// Writes the rest of an array up to its next container, which it only opens. The functions for
/// dictionaries below do the same.
void GAD_ZelJSONWriter::writeElements() {
    Frame& frame = frames_.back();
    while (frame.left != 0) {
        separate(frame);
        const Value& value = *frame.element++;
        if (!writeScalar(value)) {
            open(value);
            return;
        }
    }
}

void GAD_ZelJSONWriter::writeMembers() {
    Frame& frame = frames_.back();
    while (frame.left != 0) {
        const auto& [key, value] = *frame.member++;
        if (!writeMember(frame, key, value))
            return;
    }
}

void GAD_ZelJSONWriter::writeSortedMembers() {
    Frame& frame = frames_.back();
    while (frame.left != 0) {
        const auto [key, value] = sorted_.back();
        sorted_.pop_back();
        if (!writeMember(frame, key, *value))
            return;
    }
}

/// Writes a member; returns false when its value is a container, which it only opens.
inline bool GAD_ZelJSONWriter::writeMember(Frame& frame, std::string_view key, const Value& value) {
    separate(frame);
    out_.putQuoted(key);
    if (layout_.humanReadable)
        out_.put(" : ");
    else
        out_.putWithinSlack(':');
    if (writeScalar(value))
        return true;
    open(value);
    return false;
}

/// Moves on to the next element or member.
inline void GAD_ZelJSONWriter::separate(Frame& frame) {
    if (!frame.isFirst)
        out_.putWithinSlack(',');
    frame.isFirst = false;
    --frame.left;
    if (layout_.humanReadable)
        breakLine();
}

void GAD_ZelJSONWriter::open(const Value& container) {
    out_.putWithinSlack(container.isDictionary() ? '{' : '[');
    out_.makeSlack();
    if (container.isArray()) {
        const Value::Array& elements = container.array();
        frames_.push_back({.element = elements.data(),
                           .member = {},
                           .left = elements.size(),
                           .isDictionary = false,
                           .isFirst = true});
        return;
    }
    const Value::Dictionary& members = container.dictionary();
    frames_.push_back({.element = nullptr,
                       .member = members.begin(),
                       .left = members.size(),
                       .isDictionary = true,
                       .isFirst = true});
    if (!layout_.sortKeys)
        return;
    for (const auto& [key, value] : members)
        sorted_.emplace_back(key, &value);
    std::sort(sorted_.end() - static_cast<std::ptrdiff_t>(members.size()), sorted_.end(),
              [](const Member& a, const Member& b) { return isBefore(b.first, a.first); });
}

void GAD_ZelJSONWriter::close() {
    const Frame frame = frames_.back();
    frames_.pop_back();
    if (!frame.isFirst && layout_.humanReadable)
        breakLine();
    out_.putWithinSlack(frame.isDictionary ? '}' : ']');
    out_.makeSlack();
}

void GAD_ZelJSONWriter::breakLine() {
    out_.putWithinSlack('\n');
    out_.putBlanks(2 * frames_.size());
}
}
