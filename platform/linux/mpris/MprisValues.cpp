#include "platform/linux/mpris/MprisValues.h"

#include <gio/gio.h>

#include <cmath>

namespace vistrel::MprisValues {

namespace {

constexpr double kMicrosecond = 1e6;

/// Bytes of file names and tags may be anything; the bus takes UTF-8 only.
GVariant* text(const std::string& bytes) {
    return g_variant_new_take_string(
        g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size())));
}

void addText(GVariantBuilder& builder, const char* key, const std::string& value) {
    if (!value.empty())
        g_variant_builder_add(&builder, "{sv}", key, text(value));
}

}

std::int64_t microseconds(double seconds) {
    return std::llround(seconds * kMicrosecond);
}

double seconds(std::int64_t microseconds) {
    return static_cast<double>(microseconds) / kMicrosecond;
}

const char* playbackStatus(const host::NowPlaying& nowPlaying) {
    switch (nowPlaying.state) {
    case host::NowPlaying::State::Playing:
        return "Playing";
    case host::NowPlaying::State::Paused:
        return "Paused";
    case host::NowPlaying::State::Stopped:
        break;
    }
    return "Stopped";
}

const char* loopStatus(host::NowPlaying::Loop loop) {
    switch (loop) {
    case host::NowPlaying::Loop::Track:
        return "Track";
    case host::NowPlaying::Loop::Queue:
        return "Playlist";
    case host::NowPlaying::Loop::None:
        break;
    }
    return "None";
}

std::optional<host::NowPlaying::Loop> loopFrom(std::string_view status) {
    using Loop = host::NowPlaying::Loop;
    for (const Loop loop : {Loop::None, Loop::Track, Loop::Queue})
        if (status == loopStatus(loop))
            return loop;
    return std::nullopt;
}

std::string trackPath(const host::NowPlaying& nowPlaying) {
    return "/org/vistrel/Vistrel/track/" + std::to_string(nowPlaying.track);
}

GVariant* metadata(const host::NowPlaying& nowPlaying, const std::string& url) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&builder, "{sv}", "mpris:trackid",
                          g_variant_new_object_path(trackPath(nowPlaying).c_str()));
    if (nowPlaying.duration > 0)
        g_variant_builder_add(&builder, "{sv}", "mpris:length",
                              g_variant_new_int64(microseconds(nowPlaying.duration)));
    addText(builder, "xesam:title", nowPlaying.title);
    addText(builder, "xesam:album", nowPlaying.album);
    addText(builder, "xesam:url", url);
    addText(builder, "mpris:artUrl", nowPlaying.artUrl);
    if (!nowPlaying.artist.empty()) {
        GVariant* artist = text(nowPlaying.artist);
        g_variant_builder_add(&builder, "{sv}", "xesam:artist",
                              g_variant_new_array(G_VARIANT_TYPE_STRING, &artist, 1));
    }
    return g_variant_builder_end(&builder);
}

}
