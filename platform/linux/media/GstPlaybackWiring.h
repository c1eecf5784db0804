#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/media/GstPlayback.h"

#include <atomic>
#include <functional>
#include <memory>

namespace vistrel {

/// Inserts an element that sets the volume. The pipeline's own volume element leaks with each
/// player.
NativeReference<GstElement> insertVolume(GstElement* pipeline);
/// Passes cookies, credential and user agent to HTTP sources.
[[nodiscard]] SignalConnection dressSource(GstElement* pipeline, const PlaybackSource& source);
/// Calls `requested` on the main loop when the sound server requests a state.
[[nodiscard]] SignalConnection watchRequests(GstElement* pipeline,
                                             std::function<void(GstState state)> requested);
/// Sets `stopped` before the pipeline reports that its source has stopped at a redirect.
[[nodiscard]] SignalConnection watchRedirects(GstElement* pipeline,
                                              std::shared_ptr<std::atomic<bool>> stopped);
/// Keeps `refused` up to date: whether the source's server is not known to send parts of a file.
/// Asked for one, it would send the whole, which is an error.
[[nodiscard]] SignalConnection watchRanges(GstElement* pipeline,
                                           std::shared_ptr<std::atomic<bool>> refused);
/// Calls `prerolled` on the main loop when the pipeline has the picture and sound of its position.
[[nodiscard]] SignalConnection watchPreroll(GstElement* pipeline, std::function<void()> prerolled);
/// Lets decoders use one thread for pictures that one can well decode: each further thread costs
/// memory for several frames, and processor time.
[[nodiscard]] SignalConnection limitDecoders(GstElement* pipeline);
/// Stops the pipeline at once and releases it a little later, taking over the reference.
void retire(GstPlay* play);

}
