#pragma once

namespace vistrel {
class NSURL;

/// Takes one server for everything that an ad vendor supplies, until the process ends. For
/// command-line options; a vendor's real hosts stand in the settings file.
void useGADServer(const NSURL& origin);

}
