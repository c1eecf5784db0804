#include "platform/linux/media/VideoFrame.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

using FrameReference = std::shared_ptr<const VideoFrame>;
constexpr std::size_t kFramesKept = 2;

void dropReference(gpointer reference) {
    delete static_cast<FrameReference*>(reference);
}

}

VideoFrame::VideoFrame(int columns, int rows)
    : width(columns)
    , height(rows)
    , pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows))
    , surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                  CAIRO_FORMAT_RGB24, columns, rows, columns * 4)) {
}

VideoFrame::~VideoFrame() {
    cairo_surface_destroy(surface);
}

std::shared_ptr<VideoFrame> VideoFramePool::take(int width, int height) {
    std::unique_ptr<VideoFrame> frame;
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(free_, [&](const auto& kept) {
            return kept->width != width || kept->height != height;
        });
        if (!free_.empty()) {
            frame = std::move(free_.back());
            free_.pop_back();
        }
    }
    if (!frame)
        frame = std::make_unique<VideoFrame>(width, height);
    return {frame.release(), [pool = weak_from_this()](VideoFrame* done) {
                std::unique_ptr<VideoFrame> owned(done);
                if (const auto alive = pool.lock())
                    alive->giveBack(std::move(owned));
            }};
}

void VideoFramePool::giveBack(std::unique_ptr<VideoFrame> frame) {
    const std::lock_guard lock(mutex_);
    if (free_.size() < kFramesKept)
        free_.push_back(std::move(frame));
}

GskRenderNode* makeSoftwareNode(const VideoFrame& frame, const graphene_rect_t& bounds) {
    GskRenderNode* node = gsk_cairo_node_new(&bounds);
    cairo_t* cairo = gsk_cairo_node_get_draw_context(node);
    const auto width = static_cast<double>(bounds.size.width);
    const auto height = static_cast<double>(bounds.size.height);
    cairo_translate(cairo, static_cast<double>(bounds.origin.x),
                    static_cast<double>(bounds.origin.y));
    cairo_rectangle(cairo, 0, 0, width, height);
    if (width != frame.width || height != frame.height)
        cairo_scale(cairo, width / frame.width, height / frame.height);
    cairo_set_source_surface(cairo, frame.surface, 0, 0);
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_fill(cairo);
    cairo_destroy(cairo);
    return node;
}

GskRenderNode* makeTextureNode(const FrameReference& frame, const graphene_rect_t& bounds) {
    const auto stride = static_cast<gsize>(frame->width) * 4;
    GBytes* bytes =
        g_bytes_new_with_free_func(frame->pixels.data(), stride * static_cast<gsize>(frame->height),
                                   dropReference, new FrameReference(frame));
    GdkTexture* texture = gdk_memory_texture_new(frame->width, frame->height,
                                                 GDK_MEMORY_B8G8R8A8_PREMULTIPLIED, bytes, stride);
    GskRenderNode* node = gsk_texture_node_new(texture, &bounds);
    g_object_unref(texture);
    g_bytes_unref(bytes);
    return node;
}

}
