#include "ads/json/GAD_ZelJSONReader.h"

#include "ads/json/GAD_ZelJSONScan.h"

#include <limits>
#include <utility>

namespace vistrel {
namespace {
/// Zero bytes after the text, more than the scanner ever reads at once.
constexpr std::size_t kPadding = 64;

std::string paddedCopy(std::string_view text) {
    std::string copy;
    copy.reserve(text.size() + kPadding);
    copy += text;
    copy.resize(text.size() + kPadding);
    return copy;
}

char* skipBlanks(char* at) {
    // Usually there is nothing to skip, and any character that may follow is greater than a blank.
    if (*at > ' ')
        return at;
    while (jsonScan::isBlank(*at))
        ++at;
    return at;
}
}

GAD_ZelJSONReader::GAD_ZelJSONReader(std::string_view text, unsigned maxDepth)
    : text_(paddedCopy(text))
    , end_(text_.data() + text.size())
    , maxDepth_(maxDepth ? maxDepth : std::numeric_limits<std::size_t>::max()) {}

std::optional<Value> GAD_ZelJSONReader::read() {
    char* at = readAll();
    if (!at) {
        blameOuterContainers();
        return std::nullopt;
    }
    if (skipBlanks(at) != end_) {
        fail(Code::Garbage, "Garbage after JSON");
        return std::nullopt;
    }
    return builder_.finish();
}

/// Reads one value with everything in it. Containers are kept on the builder's stack, not on ours.
char* GAD_ZelJSONReader::readAll() {
    char* at = value(skipBlanks(text_.data()));
    while (at && builder_.openContainers() != 0)
        at = builder_.isInDictionary() ? member(at) : element(at);
    return at;
}

/// Reads an array's elements up to its end or the next container, which it only opens.
char* GAD_ZelJSONReader::element(char* at) {
    const std::size_t depth = builder_.openContainers();
    do {
        at = skipBlanks(at);
        if (*at == ']') {
            builder_.close();
            return endOfElement(at + 1);
        }
        if (at == end_)
            return fail(Code::InputEnded, "End of input while parsing array");
        at = value(at);
        if (!at) {
            blameContainer();
            return nullptr;
        }
        if (builder_.openContainers() != depth)
            return at;
        at = endOfElement(at);
    } while (at);
    return at;
}

/// Reads a dictionary's members up to its end or the next container, which it only opens.
char* GAD_ZelJSONReader::member(char* at) {
    const std::size_t depth = builder_.openContainers();
    do {
        at = skipBlanks(at);
        if (*at == '}') {
            builder_.close();
            return endOfElement(at + 1);
        }
        if (*at != '"')
            return at == end_ ? fail(Code::InputEnded, "End of input while parsing object")
                              : fail(Code::Parse, "Object key string expected");
        std::string_view key;
        at = string(at + 1, key);
        if (!at)
            return fail(Code::Parse, "Object key string expected", std::move(error_));
        builder_.pushKey(std::string(key));
        at = skipBlanks(at);
        if (*at != ':')
            return fail(Code::Parse, "Expected ':' separating key and value");
        at = value(skipBlanks(at + 1));
        if (!at) {
            blameContainer();
            return nullptr;
        }
        if (builder_.openContainers() != depth)
            return at;
        at = endOfElement(at);
    } while (at);
    return at;
}

/// Skips the comma that may follow a value in a container; it must not be the last thing there.
inline char* GAD_ZelJSONReader::endOfElement(char* at) {
    if (builder_.openContainers() == 0)
        return at;
    at = skipBlanks(at);
    if (*at != ',')
        return at;
    at = skipBlanks(at + 1);
    if (*at == ']' && !builder_.isInDictionary())
        return fail(Code::TrailingComma, "Trailing comma disallowed in array");
    if (*at == '}' && builder_.isInDictionary())
        return fail(Code::TrailingComma, "Trailing comma disallowed in object");
    return at;
}

inline char* GAD_ZelJSONReader::value(char* at) {
    switch (*at) {
    case '"': {
        std::string_view text;
        at = string(at + 1, text);
        if (at)
            builder_.push(text);
        return at;
    }
    case '[':
    case '{':
        return open(at);
    case 't':
        return literal(at, "true");
    case 'f':
        return literal(at, "false");
    case 'n':
        return literal(at, "null");
    case '-':
    case '0':
    case '1':
    case '2':
    case '3':
    case '4':
    case '5':
    case '6':
    case '7':
    case '8':
    case '9':
        return number(at);
    case '+':
        return fail(Code::BadNumber, "Leading + disallowed in number");
    default:
        return at == end_ ? fail(Code::InputEnded, "Unexpected end of string")
                          : fail(Code::Parse, "Unrecognised leading character");
    }
}

inline char* GAD_ZelJSONReader::literal(char* at, std::string_view word) {
    if (std::string_view(at, word.size()) != word)
        return fail(Code::Parse, "Expected '" + std::string(word) + "'");
    builder_.push(word == "null" ? Value() : Value(word == "true"));
    return at + word.size();
}

inline char* GAD_ZelJSONReader::open(char* at) {
    if (builder_.openContainers() >= maxDepth_)
        return fail(Code::TooDeep, "Nested too deep");
    if (*at == '[')
        builder_.openArray();
    else
        builder_.openDictionary();
    return at + 1;
}

inline char* GAD_ZelJSONReader::string(char* at, std::string_view& text) {
    char* const begin = at;
    at += jsonScan::plainEnd(at) - at;
    if (*at != '"')
        return escapedString(begin, at, text);
    text = {begin, at};
    return at + 1;
}

/// Finds the digits among the first 32 bytes at once; the rest is arithmetic on their mask.
inline char* GAD_ZelJSONReader::number(char* at) {
    char* const begin = at;
    at += *at == '-';
    const std::uint32_t others = ~jsonScan::digits(at);
    if (others == 0)
        return longNumber(begin);
    const auto whole = static_cast<unsigned>(std::countr_zero(others));
    if (whole == 0 || (whole > 1 && *at == '0'))
        return badNumber(begin);
    unsigned length = whole;
    if (at[whole] == '.') {
        const std::uint32_t afterPoint = others & ~((std::uint32_t{2} << whole) - 1);
        if (afterPoint == 0)
            return longNumber(begin);
        length = static_cast<unsigned>(std::countr_zero(afterPoint));
        if (length == whole + 1)
            return badNumber(begin);
    }
    if ((at[length] | 0x20) == 'e')
        return longNumber(begin);
    builder_.push(Value::decimal({begin, at + length}));
    return at + length;
}

char* GAD_ZelJSONReader::fail(Code code, std::string message, GAD_ZelJSONErrorPointer underlying) {
    error_ = zelJSONError(code, std::move(message), std::move(underlying));
    return nullptr;
}

void GAD_ZelJSONReader::blameContainer() {
    // Excessive depth is an error of the whole text, not of the innermost value.
    if (error_->code() == static_cast<int>(Code::TooDeep))
        return;
    if (builder_.isInDictionary())
        fail(Code::Parse, "Object value expected for key: " + std::string(builder_.lastKey()),
             std::move(error_));
    else
        fail(Code::Parse, "Expected value while parsing array", std::move(error_));
}

void GAD_ZelJSONReader::blameOuterContainers() {
    while (builder_.openContainers() != 0) {
        builder_.abandon();
        if (builder_.openContainers() != 0)
            blameContainer();
    }
}
}
