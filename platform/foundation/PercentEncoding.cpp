#include "platform/foundation/PercentEncoding.h"

#include "platform/foundation/HexDigits.h"

namespace vistrel {

namespace {
std::string encodedExcept(std::string_view plainMarks, std::string_view text) {
    std::string encoded;
    encoded.reserve(text.size());
    for (const char character : text) {
        if ((character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
            (character >= '0' && character <= '9') ||
            plainMarks.find(character) != std::string_view::npos) {
            encoded += character;
            continue;
        }
        encoded += '%';
        appendHex(encoded, static_cast<unsigned char>(character), kUpperHexDigits);
    }
    return encoded;
}
}

std::optional<std::string> strictlyPercentDecoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            bytes += text[at];
            continue;
        }
        if (at + 2 >= text.size())
            return std::nullopt;
        const int high = hexDigitValue(text[at + 1]);
        const int low = hexDigitValue(text[at + 2]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return bytes;
}

std::string percentDecoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const bool escape = text.size() >= 3 && text[0] == '%' && hexDigitValue(text[1]) >= 0 &&
                            hexDigitValue(text[2]) >= 0;
        bytes += escape ? static_cast<char>(hexDigitValue(text[1]) * 16 + hexDigitValue(text[2]))
                        : text[0];
        text.remove_prefix(escape ? 3 : 1);
    }
    return bytes;
}

std::string percentEncodedPath(std::string_view path) {
    return encodedExcept("-._~/!$&'()*+,=:@", path);
}

std::string percentEncodedComponent(std::string_view text) {
    return encodedExcept("-._~", text);
}

}
