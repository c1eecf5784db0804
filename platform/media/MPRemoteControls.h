#pragma once
#include "platform/host/MediaControls.h"

namespace vistrel {

using MPNowPlayingInfo = host::NowPlaying;
/// Receives commands from outside the screen, on the main thread.
using MPRemoteControlsDelegate = host::MediaControlsClient;

/// Media keys, lock screens and remote controls: tells them what is playing and forwards their
/// commands. Does nothing where the desktop has none.
namespace MPRemoteControls {

/// The delegate is not retained and must resign before it is destroyed.
void setDelegate(MPRemoteControlsDelegate* delegate);
/// Does nothing when another delegate has replaced this one.
void resignDelegate(const MPRemoteControlsDelegate& delegate);
void setNowPlayingInfo(const MPNowPlayingInfo& info);
/// After a seek, in seconds.
void positionJumped(double seconds);

}
}
