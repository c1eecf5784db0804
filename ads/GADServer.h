#pragma once

namespace vistrel {
class NSURL;

/// Uses one server for everything that an ad vendor supplies, until the process ends. Meant for
/// command-line options; a vendor's real hosts belong in the settings file.
void useGADServer(const NSURL& origin);

}
