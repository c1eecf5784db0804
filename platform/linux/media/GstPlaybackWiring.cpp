#include "platform/linux/media/GstPlaybackWiring.h"

namespace vistrel {

namespace {

struct SourceDress {
    std::vector<std::string> cookies;
    std::string userAgent;
};

void dress(GstElement*, GstElement* element, gpointer data) {
    const auto* source = static_cast<SourceDress*>(data);
    GObjectClass* type = G_OBJECT_GET_CLASS(element);
    if (!source->userAgent.empty() && g_object_class_find_property(type, "user-agent"))
        g_object_set(element, "user-agent", source->userAgent.c_str(), nullptr);
    if (source->cookies.empty() || !g_object_class_find_property(type, "cookies"))
        return;
    std::vector<const char*> cookies;
    for (const std::string& cookie : source->cookies)
        cookies.push_back(cookie.c_str());
    cookies.push_back(nullptr);
    // The source would send them on to wherever a redirect leads.
    g_object_set(element, "cookies", cookies.data(), "automatic-redirect", FALSE, nullptr);
}

constexpr guint kRetirement = 100; ///< milliseconds

/// A message holds its player. Were the player's thread to drop the last reference so, it would
/// have to wait for itself: so the bus is emptied here, and the last reference dropped here, when
/// no message is on its way.
gboolean releaseWhenQuiet(gpointer data) {
    auto* play = static_cast<GstPlay*>(data);
    GstBus* bus = gst_play_get_message_bus(play);
    gst_bus_set_flushing(bus, TRUE);
    gst_object_unref(bus);
    if (g_atomic_int_get(&G_OBJECT(play)->ref_count) > 1)
        return G_SOURCE_CONTINUE;
    gst_object_unref(play);
    return G_SOURCE_REMOVE;
}

struct Request {
    std::weak_ptr<GstPlayback*> player;
    void (*deliver)(GstPlayback& player, GstState state);
    GstState state = GST_STATE_VOID_PENDING;
};

gboolean deliverRequest(gpointer data) {
    const auto* request = static_cast<Request*>(data);
    if (auto player = request->player.lock())
        request->deliver(**player, request->state);
    return G_SOURCE_REMOVE;
}

void stateRequestedOnThread(GstBus*, GstMessage* message, gpointer data) {
    auto* request = new Request(*static_cast<Request*>(data));
    gst_message_parse_request_state(message, &request->state);
    g_idle_add_full(G_PRIORITY_DEFAULT, deliverRequest, request,
                    [](gpointer done) { delete static_cast<Request*>(done); });
}

}

/// The pipeline's own software volume is an element that it leaks with each player.
NativeReference<GstElement> GstPlayback::Wiring::insertVolume(GstElement* pipeline) {
    constexpr guint kSoftVolume = 1U << 4U; // of playbin's flags
    guint flags = 0;
    g_object_get(pipeline, "flags", &flags, nullptr);
    g_object_set(pipeline, "flags", flags & ~kSoftVolume, nullptr);
    auto volume = NativeReference<GstElement>::sink(gst_element_factory_make("volume", nullptr));
    g_object_set(pipeline, "audio-filter", volume.get(), nullptr);
    return volume;
}

void GstPlayback::Wiring::dressSource(GstElement* pipeline, const PlaybackSource& source) {
    g_signal_connect_data(
        pipeline, "source-setup", G_CALLBACK(dress),
        new SourceDress{source.cookies, source.userAgent},
        [](gpointer data, GClosure*) { delete static_cast<SourceDress*>(data); },
        G_CONNECT_DEFAULT);
}

void GstPlayback::Wiring::watchRequests(GstElement* pipeline,
                                        const std::weak_ptr<GstPlayback*>& player) {
    GstBus* bus = gst_element_get_bus(pipeline);
    gst_bus_enable_sync_message_emission(bus);
    g_signal_connect_data(
        bus, "sync-message::request-state", G_CALLBACK(stateRequestedOnThread),
        new Request{player, [](GstPlayback& asked, GstState state) { asked.stateRequested(state); },
                    GST_STATE_VOID_PENDING},
        [](gpointer data, GClosure*) { delete static_cast<Request*>(data); }, G_CONNECT_DEFAULT);
    gst_object_unref(bus);
}

void GstPlayback::Wiring::retire(GstPlay* play) {
    gst_play_stop(play);
    g_timeout_add(kRetirement, releaseWhenQuiet, play);
}

gboolean GstPlayback::Wiring::busMessage(GstBus*, GstMessage* message, gpointer self) {
    const std::weak_ptr<GstPlayback*> player = static_cast<GstPlayback*>(self)->self_;
    static_cast<GstPlayback*>(self)->received(message);
    // The player may be gone, and its watch with it.
    return !player.expired();
}

}
