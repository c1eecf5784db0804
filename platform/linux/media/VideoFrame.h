#pragma once
#include "platform/graphics/CGGeometry.h"

#include <gtk/gtk.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace vistrel {

/// A frame that is ready for the screen.
struct VideoFrame {
    VideoFrame(int columns, int rows);
    ~VideoFrame();
    VideoFrame(const VideoFrame&) = delete;
    VideoFrame& operator=(const VideoFrame&) = delete;

    const int width;
    const int height;
    std::vector<std::uint32_t> pixels; ///< blue, green, red, 255
    /// The pixels' memory as the software renderer takes it. It lives as long as they do: the
    /// renderer copies the pixels of a surface that goes before the nodes that show it.
    cairo_surface_t* const surface;
    int quarters = 0;     ///< clockwise rotation that has already been applied
    bool isMoving = true; ///< false for the still picture of a paused player
};

/// Memory of earlier frames, reused because touching fresh pages costs more than making a frame.
/// Any thread.
class VideoFramePool : public std::enable_shared_from_this<VideoFramePool> {
public:
    std::shared_ptr<VideoFrame> take(int width, int height);

private:
    void giveBack(std::unique_ptr<VideoFrame> frame);

    std::mutex mutex_;
    std::vector<std::unique_ptr<VideoFrame>> free_;
};

/// A node that shows a frame in the bounds. The software renderer paints from the frame's own
/// memory: keep the frame until another node takes this one's place.
GskRenderNode* makeSoftwareNode(const VideoFrame& frame, const graphene_rect_t& bounds);
GskRenderNode* makeTextureNode(const std::shared_ptr<const VideoFrame>& frame,
                               const graphene_rect_t& bounds);

}
