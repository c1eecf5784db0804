#include "ads/Utility/GADTextualDescription.h"

#include "ads/json/GAD_ZelJSONDescription.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace vistrel {

namespace {

void describe(std::string& text, const Value& value, std::size_t depth);

/// In a container, a text is quoted unless it is one plain word.
std::string quotedText(std::string_view text) {
    const bool plain = !text.empty() && std::ranges::all_of(text, [](char character) {
        return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
               (character >= 'A' && character <= 'Z') || character == '_' || character == '.' ||
               character == '/';
    });
    if (plain)
        return std::string(text);
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + '"';
}

void describeEntry(std::string& text, const Value& value, std::size_t depth) {
    if (value.isString() || value.isDate())
        text += quotedText(gadTextualDescription(value));
    else
        describe(text, value, depth);
}

void describe(std::string& text, const Value::Array& array, std::size_t depth) {
    const std::string indentation(depth * 4, ' ');
    text += "(\n";
    bool first = true;
    for (const Value& element : array) {
        text += first ? "" : ",\n";
        first = false;
        text += indentation + "    ";
        describeEntry(text, element, depth + 1);
    }
    text += first ? "" : "\n";
    text += indentation + ")";
}

void describe(std::string& text, const Value::Dictionary& dictionary, std::size_t depth) {
    const std::string indentation(depth * 4, ' ');
    text += "{\n";
    for (const auto& [key, value] : dictionary) {
        text += indentation + "    " + quotedText(key) + " = ";
        describeEntry(text, value, depth + 1);
        text += ";\n";
    }
    text += indentation + "}";
}

void describe(std::string& text, const Value& value, std::size_t depth) {
    // An ad page may send values that are nested deeper than the stack allows.
    constexpr std::size_t deepest = 256;
    if (depth > deepest) {
        text += "...";
        return;
    }
    switch (value.kind()) {
    case Value::Kind::Null:
        text += "<null>";
        return;
    case Value::Kind::Boolean:
        text += value.boolean() ? "1" : "0";
        return;
    case Value::Kind::Number:
        text += value.numberText();
        return;
    case Value::Kind::String:
        text += value.string();
        return;
    case Value::Kind::Date:
    case Value::Kind::Data:
        text += zelJSONDescription(value);
        return;
    case Value::Kind::Array:
        describe(text, value.array(), depth);
        return;
    case Value::Kind::Dictionary:
        describe(text, value.dictionary(), depth);
        return;
    }
}

}

std::string gadTextualDescription(const Value& value) {
    std::string text;
    describe(text, value, 0);
    return text;
}

std::string gadTextualDescription(const Value::Dictionary& dictionary) {
    std::string text;
    describe(text, dictionary, 0);
    return text;
}

std::string gadAddressText(const void* object) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%p", object);
    return buffer.data();
}

}
