#pragma once
#include "platform/host/Network.h"

#include <curl/curl.h>

#include <string>

namespace vistrel {

/// What a failed transfer means to people. `detail` is the library's own text, which may be empty.
[[nodiscard]] host::TransferError transferErrorOf(CURLcode result, const std::string& detail);

}
