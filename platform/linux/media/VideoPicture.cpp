#include "platform/linux/media/VideoPicture.h"

#include <gst/app/gstappsink.h>
#include <gst/video/video.h>

namespace vistrel {

namespace {

using FeedReference = std::shared_ptr<VideoFeed>;

VideoFeed& feedOf(gpointer data) {
    return **static_cast<FeedReference*>(data);
}

void dropReference(gpointer data) {
    delete static_cast<FeedReference*>(data);
}

PictureTurn turnOf(GstVideoOrientationMethod method) {
    switch (method) {
    case GST_VIDEO_ORIENTATION_90R:
        return {false, 1};
    case GST_VIDEO_ORIENTATION_180:
        return {false, 2};
    case GST_VIDEO_ORIENTATION_90L:
        return {false, 3};
    case GST_VIDEO_ORIENTATION_HORIZ:
        return {true, 0};
    case GST_VIDEO_ORIENTATION_UR_LL:
        return {true, 1};
    case GST_VIDEO_ORIENTATION_VERT:
        return {true, 2};
    case GST_VIDEO_ORIENTATION_UL_LR:
        return {true, 3};
    default:
        return {};
    }
}

GstPadProbeReturn lookForOrientation(GstPad*, GstPadProbeInfo* info, gpointer data) {
    GstEvent* event = gst_pad_probe_info_get_event(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_TAG)
        return GST_PAD_PROBE_OK;
    GstTagList* tags = nullptr;
    gst_event_parse_tag(event, &tags);
    GstVideoOrientationMethod method{};
    if (gst_video_orientation_from_tag(tags, &method))
        feedOf(data).setOrientation(turnOf(method));
    return GST_PAD_PROBE_OK;
}

/// Decoders pad their frames. Unless the sink says that it reads the layout from the frame, they
/// copy each one into a frame without padding.
GstPadProbeReturn acceptPaddedFrames(GstPad*, GstPadProbeInfo* info, gpointer) {
    GstQuery* query = gst_pad_probe_info_get_query(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION)
        return GST_PAD_PROBE_OK;
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return GST_PAD_PROBE_HANDLED;
}

}

GstElement* VideoPicture::makeSink() {
    GstElement* sink = gst_element_factory_make("appsink", nullptr);
    // The usual output of decoders; the pipeline converts other formats.
    GstCaps* caps = gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, "I420", nullptr);
    g_object_set(sink, "caps", caps, "sync", TRUE, "max-buffers", 1U, "drop", TRUE, nullptr);
    gst_caps_unref(caps);
    GstAppSinkCallbacks callbacks{};
    callbacks.new_preroll = [](GstAppSink* from, gpointer data) {
        feedOf(data).offer(gst_app_sink_pull_preroll(from), VideoFeed::Moment::Paused);
        return GST_FLOW_OK;
    };
    callbacks.new_sample = [](GstAppSink* from, gpointer data) {
        feedOf(data).offer(gst_app_sink_pull_sample(from), VideoFeed::Moment::Playing);
        return GST_FLOW_OK;
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(sink), &callbacks, new FeedReference(feed_),
                               dropReference);
    GstPad* pad = gst_element_get_static_pad(sink, "sink");
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, lookForOrientation,
                      new FeedReference(feed_), dropReference);
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, acceptPaddedFrames, nullptr,
                      nullptr);
    gst_object_unref(pad);
    return sink;
}

}
