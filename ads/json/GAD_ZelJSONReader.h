#pragma once
#include "ads/json/GAD_ZelJSONError.h"
#include "platform/foundation/ValueBuilder.h"

#include <optional>
#include <string>
#include <string_view>

namespace vistrel {
/// Reads one text, once. Scans a copy of the text that ends in zero bytes, which allows reads
/// beyond the end; strings with escapes are unescaped in place.
///
/// The scanning functions take the position at which they begin and return the one after what they
/// read, or null after a failure.
class GAD_ZelJSONReader {
public:
    /// Containers may be nested maxDepth deep; 0 for no limit.
    GAD_ZelJSONReader(std::string_view text, unsigned maxDepth);

    std::optional<Value> read();
    /// Why read() failed; null otherwise.
    [[nodiscard]] const GAD_ZelJSONErrorPointer& error() const { return error_; }

private:
    using Code = GAD_ZelJSONErrorCode;

    char* readAll();
    char* element(char* at);
    char* member(char* at);
    char* endOfElement(char* at);
    char* value(char* at);
    char* literal(char* at, std::string_view word);
    char* number(char* at);
    char* longNumber(char* at);
    char* badNumber(const char* at);
    char* open(char* at);
    /// Reads a string after its opening quote and stores its unescaped text.
    char* string(char* at, std::string_view& text);
    char* escapedString(char* begin, char* at, std::string_view& text);
    char* escape(char* at, char*& out);
    char* unicodeEscape(char* at, char*& out);
    char* lowSurrogate(char* at, unsigned high, unsigned& character);
    char* hexQuad(char* at, unsigned& quad);

    char* fail(Code code, std::string message, GAD_ZelJSONErrorPointer underlying = nullptr);
    char* failControlCharacter(char byte);
    /// The error of a value becomes the cause of an error of the innermost open container.
    void blameContainer();
    void blameOuterContainers();

    std::string text_;
    char* end_;
    ValueBuilder builder_;
    std::size_t maxDepth_;
    GAD_ZelJSONErrorPointer error_;
};
}
