#include "platform/foundation/PlainFilename.h"

#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/UTF8Text.h"

#include <cstddef>

namespace vistrel {

namespace {

/// Anything longer is a name with a dot in it, not an extension.
constexpr std::size_t kLongestExtension = 32;

bool isControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// Marks that change the reading direction: they can make "gpj.exe" look like another file.
bool isDirectionMark(char32_t character) {
    return character == 0x061C || character == 0x200E || character == 0x200F ||
           (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

/// Joiners inside words are kept: some scripts need them.
bool isUnseen(char32_t character) {
    return character == 0x200B || character == 0x2028 || character == 0x2029 ||
           character == 0x2060 || character == 0xFEFF || (character & 0xFFFE) == 0xFFFE;
}

bool isBlank(char32_t character) {
    return character == ' ' || character == 0xA0 || character == 0x1680 ||
           (character >= 0x2000 && character <= 0x200A) || character == 0x202F ||
           character == 0x205F || character == 0x3000;
}

bool isTrimmed(char32_t character) {
    return character == '.' || isBlank(character);
}

std::string_view lastSegment(std::string_view path) {
    while (!path.empty() && (path.back() == '/' || path.back() == '\\'))
        path.remove_suffix(1);
    const auto separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

/// Without dots and blanks at both ends.
std::string_view trimmed(std::string_view text) {
    const char* begin = nullptr;
    const char* end = nullptr;
    for (std::string_view rest = text; !rest.empty();) {
        const char* at = rest.data();
        if (isTrimmed(takeUTF8Character(rest)))
            continue;
        if (!begin)
            begin = at;
        end = rest.data();
    }
    return begin ? std::string_view(begin, static_cast<std::size_t>(end - begin))
                 : std::string_view();
}

std::string fittingName(std::string_view name) {
    if (name.size() <= kLongestFilename)
        return std::string(name);
    const std::string_view extension = pathExtension(name);
    if (extension.empty() || extension.size() > kLongestExtension)
        return std::string(trimmed(shortenedUTF8(name, kLongestFilename)));
    const std::string_view stem = name.substr(0, name.size() - extension.size() - 1);
    std::string fitting(shortenedUTF8(stem, kLongestFilename - extension.size() - 1));
    return fitting.append(".").append(extension);
}

}

std::string legibleFilename(std::string_view name) {
    std::string kept;
    kept.reserve(name.size());
    while (!name.empty()) {
        const char32_t character = takeUTF8Character(name);
        if (!isControl(character) && !isDirectionMark(character) && !isUnseen(character))
            appendUTF8Character(kept, character);
    }
    return kept;
}

std::string cleanedFilename(std::string_view name) {
    const std::string clean = legibleFilename(name);
    return fittingName(trimmed(lastSegment(clean)));
}

}
