#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/linux/media/VideoFrame.h"
#include "platform/linux/media/YuvScaler.h"
#include "platform/linux/window/ForeignPicture.h"

#include <gst/gst.h>

#include <deque>
#include <memory>
#include <mutex>

namespace vistrel {

/// The way of a film's frames from the pipeline to the screen. The pipeline's thread scales, turns
/// and converts each frame to the pixels that the screen has asked for; the main loop only puts the
/// finished one there. A frame is prepared only while the frames before it are being drawn: what is
/// covered, minimised or taken off the screen costs nothing but its decoding.
class VideoFeed : public ForeignPicture, public std::enable_shared_from_this<VideoFeed> {
public:
    VideoFeed() = default;
    ~VideoFeed() override;
    VideoFeed(const VideoFeed&) = delete;
    VideoFeed& operator=(const VideoFeed&) = delete;

    enum class Moment { Paused, Playing };
    /// A decoded I420 frame at its time; takes over the reference. On the pipeline's thread.
    void offer(GstSample* sample, Moment moment);
    /// How the film's own data say that it is to be shown. On the pipeline's thread.
    void setOrientation(PictureTurn orientation);

    /// As it is to be shown, with square pixels and upright; 0 before the first frame.
    CGSize size() const;
    /// How many frames of the playing film were drawn.
    unsigned framesShown() const { return framesShown_; }

    void setScreen(GtkWidget* screen) override;
    void draw(GtkSnapshot* snapshot, CGSize size) override;
    void drawPixels(GtkSnapshot* snapshot, const PixelPlace& place, double pixelsPerUnit) override;

private:
    /// So many unseen frames mean that nobody is looking.
    static constexpr int kMostUndrawn = 6;
    struct Target {
        int width = 0; ///< 0: the film's own size
        int height = 0;
        int quarters = 0;
        friend bool operator==(const Target&, const Target&) = default;
    };
    void prepare();
    std::shared_ptr<VideoFrame> make(GstSample* sample, PictureTurn orientation, Target target);
    /// Makes what is shown from now on fit the target; the newest frame is at hand afterwards.
    void aimAt(const Target& target);
    void takeWaiting();
    void redraw();

    mutable std::mutex mutex_;
    GstSample* sample_ = nullptr; ///< the newest
    Moment moment_ = Moment::Paused;
    PictureTurn orientation_;
    CGSize size_;
    Target target_;
    int undrawn_ = kMostUndrawn; ///< frames prepared since one was drawn
    bool announced_ = false;
    std::shared_ptr<VideoFrame> waiting_;

    std::mutex making_; ///< taken before the other one
    YuvScaler scaler_;
    std::shared_ptr<VideoFramePool> pool_ = std::make_shared<VideoFramePool>();

    // Main loop only.
    GWeakRef screen_{};
    std::deque<std::shared_ptr<const VideoFrame>> shown_; ///< newest last
    unsigned framesShown_ = 0;
};

}
