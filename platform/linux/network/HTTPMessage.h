#pragma once
#include "platform/host/Network.h"
#include "platform/linux/NativeReference.h"

#include <libsoup/soup.h>

#include <optional>

namespace vistrel {

/// The library's message for one hop of a request; nothing when the address cannot be parsed.
[[nodiscard]] std::optional<NativeReference<SoupMessage>>
messageFor(const host::TransferRequest& request);

/// What the head of the answer says.
[[nodiscard]] host::TransferResponse responseOf(SoupMessage* message);

/// Where a redirect answer leads; empty when it is none, nothing when its address cannot be parsed.
[[nodiscard]] std::optional<std::string> redirectTarget(SoupMessage* message);

/// The request for the next hop: the method after the answer's status; what was meant for one site
/// only is not told another.
[[nodiscard]] host::TransferRequest
requestAfterRedirect(host::TransferRequest request, unsigned status, const std::string& target);

[[nodiscard]] host::TransferErrorKind errorKindOf(const GError* error);

}
