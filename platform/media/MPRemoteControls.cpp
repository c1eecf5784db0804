#include "platform/media/MPRemoteControls.h"

#include "platform/host/Host.h"

namespace vistrel::MPRemoteControls {

namespace {

const MPRemoteControlsDelegate* current = nullptr;

host::MediaControls* controls() {
    return host::isInstalled() ? host::current().mediaControls : nullptr;
}

}

void setDelegate(MPRemoteControlsDelegate* delegate) {
    current = delegate;
    if (auto* desktop = controls())
        desktop->setClient(delegate);
}

void resignDelegate(const MPRemoteControlsDelegate& delegate) {
    if (current == &delegate)
        setDelegate(nullptr);
}

void setNowPlayingInfo(const MPNowPlayingInfo& info) {
    if (auto* desktop = controls())
        desktop->setNowPlaying(info);
}

void positionJumped(double seconds) {
    if (auto* desktop = controls())
        desktop->positionJumped(seconds);
}

}
