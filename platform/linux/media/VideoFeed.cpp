#include "platform/linux/media/VideoFeed.h"

#include "platform/linux/NativeCallback.h"
#include "platform/linux/window/GraphenePlaces.h"

#include <gst/video/video.h>

#include <cmath>
#include <utility>

namespace vistrel {

namespace {

YuvPlane planeOf(const GstVideoFrame& frame, guint component) {
    return {static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_COMP_DATA(&frame, component)),
            GST_VIDEO_FRAME_COMP_WIDTH(&frame, component),
            GST_VIDEO_FRAME_COMP_HEIGHT(&frame, component),
            GST_VIDEO_FRAME_COMP_STRIDE(&frame, component)};
}

YuvColors colorsOf(const GstVideoInfo& info) {
    gdouble red = 0.299;
    gdouble blue = 0.114;
    gst_video_color_matrix_get_Kr_Kb(info.colorimetry.matrix, &red, &blue);
    return YuvColors::make(red, blue, info.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255);
}

/// With square pixels, before rotation.
CGSize sizeOf(const GstVideoInfo& info) {
    const double aspect =
        static_cast<double>(GST_VIDEO_INFO_PAR_N(&info)) / std::max(GST_VIDEO_INFO_PAR_D(&info), 1);
    return {std::max(1.0, std::round(GST_VIDEO_INFO_WIDTH(&info) * aspect)),
            static_cast<double>(GST_VIDEO_INFO_HEIGHT(&info))};
}

CGSize turned(CGSize size, PictureTurn turn) {
    return turn.swapsSides() ? CGSize{size.height, size.width} : size;
}

}

VideoFeed::~VideoFeed() {
    g_clear_pointer(&sample_, gst_sample_unref);
    g_weak_ref_clear(&screen_);
}

void VideoFeed::offer(GstSample* sample, Moment moment) {
    GstVideoInfo info;
    if (!sample)
        return;
    if (!gst_video_info_from_caps(&info, gst_sample_get_caps(sample))) {
        gst_sample_unref(sample);
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        if (GstSample* old = std::exchange(sample_, sample))
            gst_sample_unref(old);
        moment_ = moment;
        size_ = turned(sizeOf(info), orientation_);
        if (undrawn_ >= kMostUndrawn)
            return;
    }
    prepare();
    const std::lock_guard lock(mutex_);
    ++undrawn_;
    if (!std::exchange(announced_, true))
        callLater([self = shared_from_this()] { self->redraw(); });
}

void VideoFeed::setOrientation(PictureTurn orientation) {
    const std::lock_guard lock(mutex_);
    orientation_ = orientation;
}

CGSize VideoFeed::size() const {
    const std::lock_guard lock(mutex_);
    return size_;
}

void VideoFeed::prepare() {
    const std::lock_guard one(making_);
    GstSample* sample = nullptr;
    PictureTurn orientation;
    Target target;
    Moment moment{};
    {
        const std::lock_guard lock(mutex_);
        if (!sample_)
            return;
        sample = gst_sample_ref(sample_);
        orientation = orientation_;
        target = target_;
        moment = moment_;
    }
    auto frame = make(sample, orientation, target);
    gst_sample_unref(sample);
    if (!frame)
        return;
    frame->isMoving = moment == Moment::Playing;
    const std::lock_guard lock(mutex_);
    waiting_ = std::move(frame);
}

std::shared_ptr<VideoFrame> VideoFeed::make(GstSample* sample, PictureTurn orientation,
                                            Target target) {
    GstVideoInfo info;
    GstVideoFrame decoded;
    if (!gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) ||
        !gst_video_frame_map(&decoded, &info, gst_sample_get_buffer(sample), GST_MAP_READ))
        return nullptr;
    const PictureTurn turn = orientation.turnedFurther(target.quarters);
    if (target.width == 0) {
        const CGSize own = turned(sizeOf(info), turn);
        target.width = static_cast<int>(own.width);
        target.height = static_cast<int>(own.height);
    }
    auto frame = pool_->take(target.width, target.height);
    scaler_.scale({planeOf(decoded, 0), planeOf(decoded, 1), planeOf(decoded, 2), colorsOf(info)},
                  turn, target.width, target.height, frame->pixels.data());
    frame->quarters = target.quarters;
    gst_video_frame_unmap(&decoded);
    return frame;
}

void VideoFeed::aimAt(const Target& target) {
    bool isReady = true;
    {
        const std::lock_guard lock(mutex_);
        isReady = target == target_ && undrawn_ < kMostUndrawn;
        target_ = target;
        undrawn_ = 0;
    }
    // Happens rarely: for the first frame, a new size, or on return to the screen.
    if (!isReady)
        prepare();
    takeWaiting();
}

void VideoFeed::takeWaiting() {
    std::shared_ptr<VideoFrame> frame;
    {
        const std::lock_guard lock(mutex_);
        frame = std::move(waiting_);
    }
    if (!frame)
        return;
    framesShown_ += frame->isMoving ? 1 : 0;
    shown_ = std::move(frame);
}

void VideoFeed::setScreen(GtkWidget* screen) {
    g_weak_ref_set(&screen_, screen);
}

void VideoFeed::redraw() {
    {
        const std::lock_guard lock(mutex_);
        announced_ = false;
    }
    auto* screen = static_cast<GtkWidget*>(g_weak_ref_get(&screen_));
    if (!screen)
        return;
    gtk_widget_queue_draw(screen);
    g_object_unref(screen);
}

void VideoFeed::draw(GtkSnapshot* snapshot, CGSize size) {
    // A picture that is only moving, in a flip, keeps its pixels.
    const bool isSoftware = shown_ && shown_->quarters != 0;
    aimAt(isSoftware ? Target{shown_->width, shown_->height, shown_->quarters} : Target{});
    if (!shown_)
        return;
    gtk_snapshot_save(snapshot);
    const auto width = static_cast<float>(size.width);
    const auto height = static_cast<float>(size.height);
    const graphene_point_t corners[] = {graphenePoint(0, 0), graphenePoint(0, height),
                                        graphenePoint(width, height), graphenePoint(width, 0)};
    gtk_snapshot_translate(snapshot, &corners[shown_->quarters]);
    gtk_snapshot_rotate(snapshot, -90.0F * static_cast<float>(shown_->quarters));
    const bool swaps = shown_->quarters % 2 != 0;
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, swaps ? height : width, swaps ? width : height);
    GskRenderNode* node = makeTextureNode(shown_, bounds);
    gtk_snapshot_append_node(snapshot, node);
    gsk_render_node_unref(node);
    gtk_snapshot_restore(snapshot);
}

void VideoFeed::drawPixels(GtkSnapshot* snapshot, const PixelPlace& place, double pixelsPerUnit) {
    aimAt({place.width, place.height, place.quarters});
    if (!shown_)
        return;
    const auto units = [pixelsPerUnit](int pixels) {
        return static_cast<float>(pixels / pixelsPerUnit);
    };
    const graphene_rect_t bounds =
        grapheneRectangle(units(place.x), units(place.y), units(place.width), units(place.height));
    GskRenderNode* node = makeSoftwareNode(*shown_, bounds);
    gtk_snapshot_append_node(snapshot, node);
    gsk_render_node_unref(node);
}

}
