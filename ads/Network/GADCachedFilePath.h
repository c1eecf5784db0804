#pragma once
#include "platform/foundation/NSURL.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vistrel {

/// The application's first caches folder.
inline constexpr const char* kGADCachesDirectory = "/var/mobile/Library/Caches";

/// Where the copy of an address lies: in the caches folder, in a folder named after its host, a
/// file named with the hash of the whole address. Whatever the host is, the folder is one plain
/// name inside the caches folder.
std::string gadCachedFilePath(const NSURL& url);

/// FNV-1a with 32 bits: the same number for the same text on every machine and in every version.
std::uint32_t gadStableHash(std::string_view text);

}
