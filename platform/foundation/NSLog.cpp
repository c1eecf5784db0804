#include "platform/foundation/NSLog.h"

#include "platform/host/Host.h"

namespace vistrel {

void NSLog(const std::string& line) {
    if (host::isInstalled() && host::current().log)
        host::current().log(line);
}

}
