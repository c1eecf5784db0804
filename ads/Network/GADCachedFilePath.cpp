#include "ads/Network/GADCachedFilePath.h"

#include "platform/foundation/HexDigits.h"

#include <array>
#include <cinttypes>
#include <cstdio>

namespace vistrel {

namespace {

std::string hexadecimal(std::uint32_t number) {
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%" PRIx32, number);
    return buffer.data();
}

bool isPlain(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("-._~:").find(character) != std::string_view::npos;
}

/// Escapes every unsafe character, including the percent sign, so that no two hosts share a name.
/// Hosts that are empty or consist of dots would name another folder; they get names that no host
/// has.
std::string folderNameForHost(std::string_view host) {
    constexpr std::size_t longestName = 255;
    const bool onlyDots = host.find_first_not_of('.') == std::string_view::npos;
    std::string name = host.empty() ? "%" : "";
    for (const char character : host) {
        if (isPlain(character) && !onlyDots) {
            name += character;
            continue;
        }
        name += '%';
        appendHex(name, static_cast<unsigned char>(character), kLowerHexDigits);
    }
    return name.size() <= longestName ? name : "%" + hexadecimal(gadStableHash(host));
}

}

std::string gadCachedFilePath(const NSURL& url) {
    return std::string(kGADCachesDirectory) + "/" + folderNameForHost(url.host()) + "/" +
           hexadecimal(gadStableHash(url.absoluteString()));
}

std::uint32_t gadStableHash(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    return hash;
}

}
