#include "platform/foundation/SuggestedFilename.h"

#include "platform/foundation/ContentDisposition.h"
#include "platform/foundation/MediaTypeExtensions.h"
#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/PercentEncoding.h"
#include "platform/foundation/PlainFilename.h"
#include "platform/foundation/UTF8Text.h"

namespace vistrel {

namespace {

constexpr const char* kNamelessFile = "Unknown";

std::string lastSegmentOf(const NSURL& url) {
    const std::string path = url.escapedPath();
    std::string bytes = percentDecoded(std::string_view(path).substr(path.rfind('/') + 1));
    return isUTF8(bytes) ? bytes : textFromLatin1(bytes);
}

std::string nameFromURL(std::string_view address) {
    const auto url = NSURL::URLWithString(address);
    if (!url)
        return {};
    std::string name = cleanedFilename(lastSegmentOf(*url));
    return name.empty() ? cleanedFilename(url->host()) : name;
}

}

std::string plainFilename(std::string_view name) {
    std::string plain = cleanedFilename(name);
    return plain.empty() ? std::string(kNamelessFile) : plain;
}

std::string suggestedFilename(std::string_view contentDisposition, std::string_view url,
                              std::string_view mimeType) {
    std::string name =
        cleanedFilename(filenameOfContentDisposition(contentDisposition).value_or(""));
    if (name.empty())
        name = nameFromURL(url);
    if (name.empty())
        name = kNamelessFile;
    if (extensionFitsMediaType(pathExtension(name), mimeType))
        return name;
    return cleanedFilename(name.append(".").append(extensionForMediaType(mimeType)));
}

}
