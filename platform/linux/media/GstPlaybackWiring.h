#pragma once
#include "platform/linux/media/GstPlayback.h"

namespace vistrel {

/// How a player is tied to its pipeline's signals; they come on threads of the pipeline.
struct GstPlayback::Wiring {
    /// Where the volume is set from now on; null when it cannot be.
    static NativeReference<GstElement> insertVolume(GstElement* pipeline);
    /// Cookies and agent for sources that take them.
    static void dressSource(GstElement* pipeline, const PlaybackSource& source);
    /// Requests of the sound server reach the player on the main loop.
    static void watchRequests(GstElement* pipeline, const std::weak_ptr<GstPlayback*>& player);
    /// Stops the pipeline at once and lets it go a little later, taking over the reference.
    static void retire(GstPlay* play);
    static gboolean busMessage(GstBus* bus, GstMessage* message, gpointer self);
};

}
