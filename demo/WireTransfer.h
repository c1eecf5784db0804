#pragma once
#include "demo/Answer.h"
#include "demo/Misbehaviour.h"

#include <gio/gio.h>

namespace vistrel::demo {

/// Takes over a connection, writes the response to it byte by byte, with the requested faults, and
/// closes it. Returns at once; the transfer owns itself and ends when it is done or the peer has
/// gone. Takes ownership of `stream` and `socket`.
void startWireTransfer(GIOStream* stream, GSocket* socket, const Answer& answer,
                       const Misbehaviour& misbehaviour, bool headersOnly);

/// Status line and headers as sent.
std::string wireHead(const Answer& answer, const Misbehaviour& misbehaviour);
}
