#include "platform/linux/media/GstPlaybackWiring.h"

#include <utility>

namespace vistrel {

namespace {

void dress(GstElement* element, const std::vector<std::string>& cookies, const std::string& agent) {
    GObjectClass* type = G_OBJECT_GET_CLASS(element);
    if (!agent.empty() && g_object_class_find_property(type, "user-agent"))
        g_object_set(element, "user-agent", agent.c_str(), nullptr);
    if (cookies.empty() || !g_object_class_find_property(type, "cookies"))
        return;
    std::vector<const char*> fields;
    fields.reserve(cookies.size() + 1);
    for (const std::string& cookie : cookies)
        fields.push_back(cookie.c_str());
    fields.push_back(nullptr);
    // The source would send them on to wherever a redirect leads.
    g_object_set(element, "cookies", fields.data(), "automatic-redirect", FALSE, nullptr);
}

constexpr guint kRetirement = 100; ///< milliseconds

/// A message holds its player. If the last reference were dropped on the player's own thread, the
/// thread would wait for itself. So the bus is emptied here, and the last reference is dropped
/// here, once no message is on its way.
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
        [cookies = source.cookies, agent = source.userAgent](GstElement* element) {
            dress(element, cookies, agent);
        });
}

SignalConnection watchRequests(GstElement* pipeline,
                               std::function<void(GstState state)> requested) {
    const auto bus = NativeReference<GstBus>::adopt(gst_element_get_bus(pipeline));
    gst_bus_enable_sync_message_emission(bus.get());
    // On the pipeline's threads.
    return connectSignal<void(GstMessage*)>(
        bus.get(), "sync-message::request-state",
        [requested = std::move(requested)](GstMessage* message) {
            GstState state{};
            gst_message_parse_request_state(message, &state);
            callLater([requested, state] { requested(state); });
        });
}

void retire(GstPlay* play) {
    gst_play_stop(play);
    callLater([play] { releaseWhenQuiet(play); }, kRetirement);
}

}
