#pragma once

namespace vistrel {
class NSURL;

/// Whether the address is http://HOST or http://HOST:PORT. The library fetches its script without
/// encryption and from a path of its own, so nothing else can be an ad server.
bool isGADServer(const NSURL& address);

/// Uses one server for everything that an ad vendor supplies, until the process ends. Meant for
/// command-line options; a vendor's real hosts belong in the settings file.
void useGADServer(const NSURL& address);

}
