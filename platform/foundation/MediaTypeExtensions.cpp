#include "platform/foundation/MediaTypeExtensions.h"

#include "platform/foundation/HeaderFieldNames.h"

#include <algorithm>
#include <array>

namespace vistrel {

namespace {

struct MediaType {
    std::string_view name;
    std::array<std::string_view, 4> extensions; ///< the usual one first
};

constexpr std::array kMediaTypes{
    MediaType{"video/mp4", {"mp4", "m4v"}},
    MediaType{"video/m4v", {"m4v", "mp4"}},
    MediaType{"video/x-m4v", {"m4v", "mp4"}},
    MediaType{"audio/mpeg", {"mp3"}},
    MediaType{"audio/mp3", {"mp3"}},
    MediaType{"audio/mp4", {"m4a", "mp4", "m4b"}},
    MediaType{"audio/x-m4a", {"m4a"}},
    MediaType{"audio/aac", {"aac"}},
    MediaType{"audio/ogg", {"ogg", "oga", "opus"}},
    MediaType{"audio/flac", {"flac"}},
    MediaType{"audio/wav", {"wav"}},
    MediaType{"audio/x-wav", {"wav"}},
    MediaType{"video/quicktime", {"mov", "qt"}},
    MediaType{"video/mpeg", {"mpg", "mpeg", "mpe"}},
    MediaType{"video/webm", {"webm"}},
    MediaType{"video/x-matroska", {"mkv"}},
    MediaType{"image/png", {"png"}},
    MediaType{"image/jpeg", {"jpg", "jpeg"}},
    MediaType{"image/gif", {"gif"}},
    MediaType{"text/html", {"html", "htm", "shtml"}},
    MediaType{"application/pdf", {"pdf"}},
    MediaType{"application/zip", {"zip"}},
    MediaType{"application/json", {"json"}},
};

bool isMixedCase(std::string_view text) {
    const auto isSmall = [](char c) {
        return c >= 'a' && c <= 'z';
    };
    const auto isCapital = [](char c) {
        return c >= 'A' && c <= 'Z';
    };
    return std::ranges::any_of(text, isSmall) && std::ranges::any_of(text, isCapital);
}

const MediaType* typeNamed(std::string_view name) {
    const auto* found = std::ranges::find_if(kMediaTypes, [name](const MediaType& type) {
        return headerFieldNamesAreEqual(type.name, name);
    });
    return found == kMediaTypes.end() ? nullptr : found;
}

}

bool extensionFitsMediaType(std::string_view extension, std::string_view mimeType) {
    const MediaType* type = typeNamed(mimeType);
    return !type || std::ranges::any_of(type->extensions, [extension](std::string_view known) {
        return !known.empty() && headerFieldNamesAreEqual(known, extension) &&
               !isMixedCase(extension);
    });
}

std::string_view extensionForMediaType(std::string_view mimeType) {
    const MediaType* type = typeNamed(mimeType);
    return type ? type->extensions.front() : std::string_view();
}

}
