#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/linux/media/VideoFrame.h"
#include "platform/linux/media/YuvScaler.h"
#include "platform/linux/window/ForeignPicture.h"

#include <gst/gst.h>

#include <memory>
#include <mutex>

namespace vistrel {

/// Brings a film's frames from the pipeline to the screen. The pipeline's thread scales, rotates
/// and converts each frame to the size that the screen needs; the main loop only shows the result.
/// Frames are prepared only while earlier ones are being drawn: a film that is covered, minimised
/// or off the screen costs only its decoding.
class VideoFeed : public ForeignPicture, public std::enable_shared_from_this<VideoFeed> {
public:
    VideoFeed() = default;
    ~VideoFeed() override;
    VideoFeed(const VideoFeed&) = delete;
    VideoFeed& operator=(const VideoFeed&) = delete;

    enum class Moment { Paused, Playing };
    /// Receives a decoded I420 frame at its time and takes over the reference. On the pipeline's
    /// thread.
    void offer(GstSample* sample, Moment moment);
    /// Sets the orientation from the film's metadata. On the pipeline's thread.
    void setOrientation(PictureTurn orientation);

    /// The size to show, upright and with square pixels; 0 before the first frame.
    CGSize size() const;
    /// Whether a frame has been drawn; then there is always one to draw.
    bool hasShown() const { return shown_ != nullptr; }
    /// How many frames were drawn while playing.
    unsigned framesShown() const { return framesShown_; }

    void setScreen(GtkWidget* screen) override;
    void draw(GtkSnapshot* snapshot, CGSize size) override;
    void drawPixels(GtkSnapshot* snapshot, const PixelPlace& place, double pixelsPerUnit) override;

private:
    /// After this many undrawn frames, the film is considered invisible.
    static constexpr int kMostUndrawn = 6;
    struct Target {
        int width = 0; ///< 0: the film's own size
        int height = 0;
        int quarters = 0;
        friend bool operator==(const Target&, const Target&) = default;
    };
    void prepare();
    std::shared_ptr<VideoFrame> make(GstSample* sample, PictureTurn orientation, Target target);
    /// Prepares frames for this target from now on, including the newest one.
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
    std::shared_ptr<const VideoFrame> shown_;
    unsigned framesShown_ = 0;
};

}
