#include "platform/linux/media/PictureScrubber.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/media/GstPlaybackWiring.h"

#include <utility>

namespace vistrel {

std::shared_ptr<PictureScrubber>
PictureScrubber::withPipeline(NativeReference<GstElement> pipeline) {
    std::shared_ptr<PictureScrubber> scrubber(new PictureScrubber(std::move(pipeline)));
    scrubber->connection_ =
        watchPreroll(scrubber->pipeline_.get(), weakly(scrubber.get(), &PictureScrubber::shown));
    return scrubber;
}

void PictureScrubber::show(double seconds) {
    wanted_ = seconds;
    seek();
}

void PictureScrubber::finish(std::function<void()> then) {
    wanted_.reset();
    if (sending_)
        then_ = std::move(then);
    else
        then();
}

void PictureScrubber::seek() {
    if (!wanted_ || sending_ || awaitsPicture_)
        return;
    sending_ = awaitsPicture_ = true;
    struct Seek {
        std::shared_ptr<PictureScrubber> scrubber;
        double seconds;
    };
    // A seek may wait for the network, so it is sent on another thread.
    gst_element_call_async(
        pipeline_.get(),
        [](GstElement* pipeline, gpointer data) {
            const auto& seek = *static_cast<Seek*>(data);
            constexpr auto kKeyPictures = GstSeekFlags(
                GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_KEY_UNIT | GST_SEEK_FLAG_SNAP_NEAREST);
            const bool accepted =
                gst_element_seek_simple(pipeline, GST_FORMAT_TIME, kKeyPictures,
                                        static_cast<gint64>(seek.seconds * GST_SECOND)) == TRUE;
            callLater([scrubber = seek.scrubber, accepted] { scrubber->sent(accepted); });
        },
        new Seek{shared_from_this(), *std::exchange(wanted_, std::nullopt)},
        [](gpointer data) { delete static_cast<Seek*>(data); });
}

void PictureScrubber::sent(bool accepted) {
    sending_ = false;
    if (!accepted)
        awaitsPicture_ = false;
    if (const auto then = std::exchange(then_, nullptr))
        then();
    else
        seek();
}

void PictureScrubber::shown() {
    awaitsPicture_ = false;
    seek();
}

}
