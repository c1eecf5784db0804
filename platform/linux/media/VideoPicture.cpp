#include "platform/linux/media/VideoPicture.h"

#include <gst/app/gstappsink.h>
#include <gst/video/video.h>

#include <mutex>
#include <utility>

namespace vistrel {

namespace {

void unmapFrame(gpointer data) {
    auto* frame = static_cast<GstVideoFrame*>(data);
    gst_video_frame_unmap(frame);
    delete frame;
}

/// The frame's own memory as a texture; null when it cannot be read.
NativeReference<GdkTexture> textureOf(GstSample* sample) {
    GstVideoInfo info;
    auto frame = std::make_unique<GstVideoFrame>();
    if (!gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) ||
        !gst_video_frame_map(frame.get(), &info, gst_sample_get_buffer(sample), GST_MAP_READ))
        return {};
    const auto stride = static_cast<gsize>(GST_VIDEO_FRAME_PLANE_STRIDE(frame.get(), 0));
    const int width = GST_VIDEO_FRAME_WIDTH(frame.get());
    const int height = GST_VIDEO_FRAME_HEIGHT(frame.get());
    void* pixels = GST_VIDEO_FRAME_PLANE_DATA(frame.get(), 0);
    GBytes* bytes = g_bytes_new_with_free_func(pixels, stride * static_cast<gsize>(height),
                                               unmapFrame, frame.release());
    auto texture = NativeReference<GdkTexture>::adopt(
        gdk_memory_texture_new(width, height, GDK_MEMORY_B8G8R8A8_PREMULTIPLIED, bytes, stride));
    g_bytes_unref(bytes);
    return texture;
}

}

/// What streaming threads and the main loop share: the newest frame that was not shown yet.
struct VideoPicture::Feed {
    std::mutex mutex;
    GstSample* waiting = nullptr;
    bool isFirstLook = false; ///< the waiting frame is shown while paused, before playing
    bool announced = false;
    // Main loop only.
    VistrelFramePaintable* paintable = nullptr;
    unsigned framesShown = 0;

    ~Feed() { replaceWaiting(nullptr); }
    void replaceWaiting(GstSample* sample) {
        if (GstSample* old = std::exchange(waiting, sample))
            gst_sample_unref(old);
    }
    static void offer(const std::shared_ptr<Feed>& feed, GstSample* sample, bool isFirstLook);
    void show();
};

void VideoPicture::Feed::offer(const std::shared_ptr<Feed>& feed, GstSample* sample,
                               bool isFirstLook) {
    if (!sample)
        return;
    const std::lock_guard lock(feed->mutex);
    feed->replaceWaiting(sample);
    feed->isFirstLook = isFirstLook;
    if (std::exchange(feed->announced, true))
        return;
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) -> gboolean {
            (*static_cast<std::shared_ptr<Feed>*>(data))->show();
            return G_SOURCE_REMOVE;
        },
        new std::shared_ptr<Feed>(feed),
        [](gpointer data) { delete static_cast<std::shared_ptr<Feed>*>(data); });
}

void VideoPicture::Feed::show() {
    GstSample* sample = nullptr;
    bool firstLook = false;
    {
        const std::lock_guard lock(mutex);
        sample = std::exchange(waiting, nullptr);
        firstLook = isFirstLook;
        announced = false;
    }
    if (!sample)
        return;
    if (paintable) {
        if (auto texture = textureOf(sample)) {
            vistrel_frame_paintable_set_frame(paintable, texture.get());
            if (!firstLook)
                ++framesShown;
        }
    }
    gst_sample_unref(sample);
}

VideoPicture::VideoPicture()
    : paintable_(NativeReference<VistrelFramePaintable>::adopt(vistrel_frame_paintable_new()))
    , feed_(std::make_shared<Feed>()) {
    feed_->paintable = paintable_.get();
}

VideoPicture::~VideoPicture() {
    feed_->paintable = nullptr;
}

GstElement* VideoPicture::makeSink() {
    GstElement* sink = gst_element_factory_make("appsink", nullptr);
    GstCaps* caps = gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, "BGRA",
                                        "pixel-aspect-ratio", GST_TYPE_FRACTION, 1, 1, nullptr);
    g_object_set(sink, "caps", caps, "sync", TRUE, "max-buffers", 1U, "drop", TRUE, nullptr);
    gst_caps_unref(caps);
    GstAppSinkCallbacks callbacks{};
    callbacks.new_preroll = [](GstAppSink* from, gpointer data) {
        Feed::offer(*static_cast<std::shared_ptr<Feed>*>(data), gst_app_sink_pull_preroll(from),
                    true);
        return GST_FLOW_OK;
    };
    callbacks.new_sample = [](GstAppSink* from, gpointer data) {
        Feed::offer(*static_cast<std::shared_ptr<Feed>*>(data), gst_app_sink_pull_sample(from),
                    false);
        return GST_FLOW_OK;
    };
    gst_app_sink_set_callbacks(
        GST_APP_SINK(sink), &callbacks, new std::shared_ptr<Feed>(feed_),
        [](gpointer data) { delete static_cast<std::shared_ptr<Feed>*>(data); });
    return sink;
}

unsigned VideoPicture::framesShown() const {
    return feed_->framesShown;
}

int VideoPicture::width() const {
    return gdk_paintable_get_intrinsic_width(GDK_PAINTABLE(paintable_.get()));
}

int VideoPicture::height() const {
    return gdk_paintable_get_intrinsic_height(GDK_PAINTABLE(paintable_.get()));
}

}
