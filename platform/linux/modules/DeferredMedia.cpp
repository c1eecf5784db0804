#include "platform/linux/modules/DeferredMedia.h"

namespace vistrel {

DeferredMedia::DeferredMedia(const MediaSetup& setup)
    : media_("media", setup.log, kCreateMediaSymbol,
             [setup](CreateMedia create) { return std::shared_ptr<host::Media>(create(setup)); }) {}

void DeferredMedia::warmUp() {
    if (auto* media = media_.get())
        media->warmUp();
}

std::shared_ptr<host::MoviePlayback> DeferredMedia::createMoviePlayback(const std::string& url) {
    auto* media = media_.get();
    return media ? media->createMoviePlayback(url) : nullptr;
}

host::Result<std::shared_ptr<host::Playback>>
DeferredMedia::createAudioPlayback(const std::string& url) {
    if (auto* media = media_.get())
        return media->createAudioPlayback(url);
    return media_.missing();
}

host::Result<std::unique_ptr<host::AudioFileReader>>
DeferredMedia::openAudioFile(const std::string& path) {
    if (auto* media = media_.get())
        return media->openAudioFile(path);
    return media_.missing();
}

host::Result<std::string> DeferredMedia::audioRoute() {
    // Ads ask while the menu waits for its first touch, which is no reason to load the players.
    if (auto* media = media_.existing())
        return media->audioRoute();
    return host::Failure{EAGAIN, "The players have not been started."};
}

}
