#include "platform/linux/modules/DeferredMedia.h"

#include <cerrno>
#include <utility>

namespace vistrel {

namespace {
host::Failure missing() {
    return {ENOSYS, "The media module is not installed."};
}
}

DeferredMedia::DeferredMedia(MediaSetup setup)
    : setup_(std::move(setup))
    , module_("vistrel-media.so", setup_.log) {}

host::Media* DeferredMedia::media() {
    if (!media_)
        if (auto create = reinterpret_cast<CreateMedia>(module_.symbol(kCreateMediaSymbol)))
            media_.reset(create(setup_));
    return media_.get();
}

std::unique_ptr<host::MoviePlayback> DeferredMedia::createMoviePlayback(const std::string& url) {
    return media() ? media_->createMoviePlayback(url) : nullptr;
}

host::Result<std::unique_ptr<host::Playback>>
DeferredMedia::createAudioPlayback(const std::string& url) {
    if (!media())
        return missing();
    return media_->createAudioPlayback(url);
}

host::Result<std::unique_ptr<host::AudioFileReader>>
DeferredMedia::openAudioFile(const std::string& path) {
    if (!media())
        return missing();
    return media_->openAudioFile(path);
}

host::Result<std::string> DeferredMedia::audioRoute() {
    // The ads ask while the menu waits for its first touch: not worth starting the players for.
    if (!media_)
        return host::Failure{EAGAIN, "The players have not been started."};
    return media_->audioRoute();
}

}
