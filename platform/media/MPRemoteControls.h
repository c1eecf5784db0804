#pragma once
#include "platform/host/MediaControls.h"

namespace vistrel {

using MPNowPlayingInfo = host::NowPlaying;
/// Hears what is asked from outside the screen, on the main thread.
using MPRemoteControlsDelegate = host::MediaControlsClient;

/// Media keys, lock screens and remote controls: tells them what plays and does what they ask for.
/// Where the desktop has none of them, nothing happens.
namespace MPRemoteControls {

/// The delegate is not retained: it resigns before it dies.
void setDelegate(MPRemoteControlsDelegate* delegate);
/// Does nothing when another delegate has taken its place.
void resignDelegate(const MPRemoteControlsDelegate& delegate);
void setNowPlayingInfo(const MPNowPlayingInfo& info);
/// After a seek, in seconds.
void positionJumped(double seconds);

}
}
