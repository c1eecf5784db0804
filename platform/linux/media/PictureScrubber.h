#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"

#include <gst/gst.h>

#include <functional>
#include <memory>
#include <optional>

namespace vistrel {

/// Shows the pictures near a position that is being dragged. Only key pictures, which are there at
/// once: any other is decoded from the key picture before it on. One seek is under way at a time,
/// and then follows the newest position. Owned by a std::shared_ptr.
class PictureScrubber : public std::enable_shared_from_this<PictureScrubber> {
public:
    static std::shared_ptr<PictureScrubber> withPipeline(NativeReference<GstElement> pipeline);

    void show(double seconds);
    /// Forgets the positions that have not been sought, and calls `then` as soon as no seek of this
    /// scrubber can overtake another one.
    void finish(std::function<void()> then);

private:
    explicit PictureScrubber(NativeReference<GstElement> pipeline)
        : pipeline_(std::move(pipeline)) {}
    void seek();
    void sent(bool accepted);
    void shown();

    NativeReference<GstElement> pipeline_;
    SignalConnection connection_;
    std::optional<double> wanted_; ///< seconds
    bool sending_ = false;         ///< another thread is seeking
    bool awaitsPicture_ = false;
    std::function<void()> then_;
};

}
