#include "platform/linux/media/GstMedia.h"

#include "platform/linux/media/TagLibReader.h"

#include <libsoup/soup.h>
#include <malloc.h>

#include <cerrno>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

void startGStreamer() {
    static const bool started = [] {
        gst_init(nullptr, nullptr);
        return true;
    }();
    static_cast<void>(started);
}

/// The renderer allocates and frees bitmaps as large as the window for each frame of a film. By
/// default the allocator maps each from the system, whose fresh pages cost more than the painting.
void keepLargeBlocks() {
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 16 << 20);
    mallopt(M_TRIM_THRESHOLD, 32 << 20);
#endif
}

/// A file URL's device path; empty for any other URL.
std::string devicePath(const std::string& url) {
    constexpr std::string_view kScheme = "file://";
    if (!url.starts_with(kScheme))
        return {};
    char* path = g_uri_unescape_string(url.c_str() + kScheme.size(), nullptr);
    std::string result = path ? path : "";
    g_free(path);
    if (result.starts_with("localhost/"))
        result.erase(0, std::string_view("localhost").size());
    return result;
}

/// Joins all cookies into one field, because sources send a field for each string.
std::vector<std::string> cookiesFor(SoupCookieJar* jar, const std::string& url) {
    std::vector<std::string> result;
    GUri* uri = g_uri_parse(url.c_str(), GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr);
    if (char* field = jar && uri ? soup_cookie_jar_get_cookies(jar, uri, TRUE) : nullptr) {
        result.emplace_back(field);
        g_free(field);
    }
    if (uri)
        g_uri_unref(uri);
    return result;
}

}

GstMedia::GstMedia(const MediaSetup& setup)
    : setup_(setup)
    , sound_(setup.log) {}

void GstMedia::warmUp() {
    if (warmingUp_.joinable())
        return;
    warmingUp_ = std::jthread([] {
        startGStreamer();
        // What an ordinary film needs. Loading it takes about as long as all the rest of a start.
        for (const char* name :
             {"playback", "typefindfunctions", "isomp4", "videoparsersbad", "audioparsers", "libav",
              "app", "volume", "audioconvert", "audioresample", "videoconvertscale"})
            if (GstPlugin* plugin = gst_plugin_load_by_name(name))
                gst_object_unref(plugin);
    });
}

PlaybackSource GstMedia::sourceOf(const std::string& url) const {
    PlaybackSource source;
    const std::string path = devicePath(url);
    if (path.empty()) {
        source.url = url;
        source.cookies = cookiesFor(setup_.cookieJar ? setup_.cookieJar() : nullptr, url);
        source.userAgent = setup_.userAgent;
        if (setup_.credential)
            source.credential = setup_.credential(url);
        if (setup_.followRedirects)
            source.followRedirect = [this, url](const PlaybackSource::Found& found) {
                setup_.followRedirects(url, [this, found](const std::string& address) {
                    found(address.empty() ? std::nullopt : std::optional(sourceOf(address)));
                });
            };
        return source;
    }
    if (char* address = g_filename_to_uri(setup_.machinePath(path).c_str(), nullptr, nullptr)) {
        source.url = address;
        g_free(address);
    }
    return source;
}

std::shared_ptr<host::MoviePlayback> GstMedia::createMoviePlayback(const std::string& url) {
    startGStreamer();
    keepLargeBlocks();
    return std::make_shared<GstPlayback>(sourceOf(url), GstPlayback::Picture::Shown, sound_);
}

host::Result<std::shared_ptr<host::Playback>>
GstMedia::createAudioPlayback(const std::string& url) {
    const std::string path = devicePath(url);
    if (path.empty())
        return host::Failure{EINVAL, "Sound is played from files only."};
    auto reader = TagLibReader::open(setup_.machinePath(path));
    if (!reader)
        return reader.failure();
    PlaybackSource source = sourceOf(url);
    source.duration = reader.value()->info().value().duration;
    startGStreamer();
    return std::shared_ptr<host::Playback>(
        std::make_shared<GstPlayback>(std::move(source), GstPlayback::Picture::None, sound_));
}

host::Result<std::unique_ptr<host::AudioFileReader>>
GstMedia::openAudioFile(const std::string& path) {
    return TagLibReader::open(setup_.machinePath(path));
}

host::Result<std::string> GstMedia::audioRoute() {
    startGStreamer();
    return sound_.route();
}

}
