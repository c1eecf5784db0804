#pragma once
#include "demo/Answer.h"
#include "demo/Misbehaviour.h"

#include <gio/gio.h>

namespace vistrel::demo {

/// Takes over a connection and writes the answer on it byte for byte, as badly as asked for, then
/// closes it. Returns at once; the transfer owns itself and ends when it is through or the other
/// side has gone. Takes ownership of `stream` and `socket`.
void startWireTransfer(GIOStream* stream, GSocket* socket, const Answer& answer,
                       const Misbehaviour& misbehaviour, bool headersOnly);

/// Status line and headers as they go over the wire.
std::string wireHead(const Answer& answer, const Misbehaviour& misbehaviour);
}
