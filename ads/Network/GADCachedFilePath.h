#pragma once
#include "platform/foundation/NSURL.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vistrel {

/// The application's first caches folder.
inline constexpr const char* kGADCachesDirectory = "/var/mobile/Library/Caches";

/// The path of an address's copy: in the caches folder, a folder named after the host, and in that
/// a file named after the hash of the whole address. The folder's name never contains a separator.
std::string gadCachedFilePath(const NSURL& url);

/// FNV-1a with 32 bits: the same number for the same text on every machine and in every version.
std::uint32_t gadStableHash(std::string_view text);

}
