#pragma once
#include "platform/host/Network.h"

#include <curl/curl.h>

#include <string>

namespace vistrel {

/// The error to show for a failed transfer. `detail` is libcurl's message, which may be empty.
[[nodiscard]] host::TransferError transferErrorOf(CURLcode result, const std::string& detail);

}
