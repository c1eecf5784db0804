#include "platform/linux/media/GstPlaybackWiring.h"

#include <utility>

namespace vistrel {

namespace {

/// The header fields of an HTTP source's requests.
struct Dress {
    std::vector<std::string> cookies;
    std::optional<StreamCredential> credential;
    std::string userAgent;
};

void dress(GstElement* element, const Dress& what) {
    GObjectClass* type = G_OBJECT_GET_CLASS(element);
    if (!g_object_class_find_property(type, "cookies"))
        return;
    if (!what.userAgent.empty())
        g_object_set(element, "user-agent", what.userAgent.c_str(), nullptr);
    if (what.credential)
        g_object_set(element, "user-id", what.credential->user.c_str(), "user-pw",
                     what.credential->password.c_str(), nullptr);
    std::vector<const char*> fields;
    fields.reserve(what.cookies.size() + 1);
    for (const std::string& cookie : what.cookies)
        fields.push_back(cookie.c_str());
    fields.push_back(nullptr);
    // The source would send secrets to any server that a redirect leads to.
    const bool hasSecrets = what.credential || !what.cookies.empty();
    g_object_set(element, "cookies", fields.data(), "automatic-redirect",
                 static_cast<gboolean>(!hasSecrets), nullptr);
}

/// `received` runs on the pipeline's threads.
SignalConnection watchMessages(GstElement* pipeline, const char* signal,
                               std::function<void(GstMessage*)> received) {
    const auto bus = NativeReference<GstBus>::adopt(gst_element_get_bus(pipeline));
    gst_bus_enable_sync_message_emission(bus.get());
    return connectSignal<void(GstMessage*)>(bus.get(), signal, std::move(received));
}

/// True if a slow core decodes such pictures in time. Without a frame rate, an ordinary one.
bool isLight(const GstCaps* caps) {
    constexpr double kMostPixels = 1280.0 * 720 * 31; ///< a second
    const GstStructure* format = gst_caps_get_structure(caps, 0);
    gint width = 0;
    gint height = 0;
    gint frames = 0;
    gint seconds = 1;
    gst_structure_get_int(format, "width", &width);
    gst_structure_get_int(format, "height", &height);
    gst_structure_get_fraction(format, "framerate", &frames, &seconds);
    const double rate = frames > 0 && seconds > 0 ? static_cast<double>(frames) / seconds : 30;
    return width * static_cast<double>(height) * rate <= kMostPixels;
}

/// Decoders read the number of threads when they receive the format.
GstPadProbeReturn chooseThreads(GstPad* pad, GstPadProbeInfo* info, gpointer) {
    GstEvent* event = gst_pad_probe_info_get_event(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS)
        return GST_PAD_PROBE_OK;
    GstCaps* caps = nullptr;
    gst_event_parse_caps(event, &caps);
    constexpr gint kAutomatic = 0;
    GstElement* decoder = gst_pad_get_parent_element(pad);
    if (!decoder)
        return GST_PAD_PROBE_OK;
    g_object_set(decoder, "max-threads", isLight(caps) ? 1 : kAutomatic, nullptr);
    gst_object_unref(decoder);
    return GST_PAD_PROBE_OK;
}

/// Whether an answer's header has "Accept-Ranges: bytes" (RFC 9110, 14.3).
bool sendsRanges(const GstStructure* answer) {
    const GValue* value = gst_structure_get_value(answer, "response-headers");
    if (!value || !GST_VALUE_HOLDS_STRUCTURE(value))
        return false;
    bool sends = false;
    gst_structure_foreach(
        gst_value_get_structure(value),
        [](GQuark name, const GValue* field, gpointer found) -> gboolean {
            if (g_ascii_strcasecmp(g_quark_to_string(name), "Accept-Ranges") == 0 &&
                G_VALUE_HOLDS_STRING(field))
                *static_cast<bool*>(found) =
                    g_ascii_strcasecmp(g_value_get_string(field), "bytes") == 0;
            return TRUE;
        },
        &sends);
    return sends;
}

constexpr guint kRetirement = 100; ///< milliseconds

/// A message holds a reference to its player. If the last one were dropped on the player's own
/// thread, the thread would wait for itself. So the bus is emptied and the last reference is
/// dropped here, when no message is on its way.
void releaseWhenQuiet(GstPlay* play) {
    GstBus* bus = gst_play_get_message_bus(play);
    gst_bus_set_flushing(bus, TRUE);
    gst_object_unref(bus);
    if (g_atomic_int_get(&G_OBJECT(play)->ref_count) > 1)
        callLater([play] { releaseWhenQuiet(play); }, kRetirement);
    else
        gst_object_unref(play);
}

}

NativeReference<GstElement> insertVolume(GstElement* pipeline) {
    constexpr guint kSoftVolume = 1U << 4U; // of playbin's flags
    guint flags = 0;
    g_object_get(pipeline, "flags", &flags, nullptr);
    g_object_set(pipeline, "flags", flags & ~kSoftVolume, nullptr);
    auto volume = NativeReference<GstElement>::sink(gst_element_factory_make("volume", nullptr));
    g_object_set(pipeline, "audio-filter", volume.get(), nullptr);
    return volume;
}

SignalConnection dressSource(GstElement* pipeline, const PlaybackSource& source) {
    return connectSignal<void(GstElement*)>(
        pipeline, "source-setup",
        [what = Dress{source.cookies, source.credential, source.userAgent}](GstElement* element) {
            dress(element, what);
        });
}

SignalConnection watchRequests(GstElement* pipeline,
                               std::function<void(GstState state)> requested) {
    return watchMessages(
        pipeline, "sync-message::request-state",
        [requested = std::move(requested)](GstMessage* message) {
            GstState state{};
            gst_message_parse_request_state(message, &state);
            callLater([requested, state] { requested(state); });
        });
}

SignalConnection watchRedirects(GstElement* pipeline, std::shared_ptr<std::atomic<bool>> stopped) {
    return watchMessages(
        pipeline, "sync-message::error",
        [stopped = std::move(stopped)](GstMessage* message) {
            const GstStructure* details = nullptr;
            gst_message_parse_error_details(message, &details);
            guint status = 0;
            if (details)
                gst_structure_get_uint(details, "http-status-code", &status);
            if (status / 100 == 3)
                *stopped = true;
        });
}

SignalConnection watchRanges(GstElement* pipeline, std::shared_ptr<std::atomic<bool>> refused) {
    return watchMessages(
        pipeline, "sync-message::element",
        [refused = std::move(refused)](GstMessage* message) {
            const GstStructure* answer = gst_message_get_structure(message);
            if (!answer || !gst_structure_has_name(answer, "http-headers"))
                return;
            guint status = 0;
            gst_structure_get_uint(answer, "http-status-code", &status);
            if (status == 206)
                *refused = false;
            else if (status == 200)
                *refused = !sendsRanges(answer);
        });
}

SignalConnection watchPreroll(GstElement* pipeline, std::function<void()> prerolled) {
    return watchMessages(
        pipeline, "sync-message::async-done",
        [prerolled = std::move(prerolled)](GstMessage*) { callLater(prerolled); });
}

SignalConnection limitDecoders(GstElement* pipeline) {
    return connectSignal<void(GstElement*)>(
        pipeline, "element-setup",
        [](GstElement* element) {
            if (!g_object_class_find_property(G_OBJECT_GET_CLASS(element), "max-threads"))
                return;
            GstPad* pad = gst_element_get_static_pad(element, "sink");
            if (!pad)
                return;
            gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, chooseThreads, nullptr,
                              nullptr);
            gst_object_unref(pad);
        });
}

void retire(GstPlay* play) {
    gst_play_stop(play);
    callLater([play] { releaseWhenQuiet(play); }, kRetirement);
}

}
