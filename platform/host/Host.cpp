#include "platform/host/Host.h"

#include <cassert>

namespace vistrel::host {

namespace {
Host* installed = nullptr;
}

Host& current() {
    assert(installed && "no host installed");
    return *installed;
}

bool isInstalled() {
    return installed != nullptr;
}

void install(Host* host) {
    installed = host;
}

}
