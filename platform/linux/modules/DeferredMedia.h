#pragma once
#include "platform/host/Media.h"
#include "platform/linux/media/MediaSetup.h"
#include "platform/linux/modules/DeferredService.h"

#include <memory>
#include <string>

namespace vistrel {

/// The players and the tag reader, loaded on first use.
class DeferredMedia : public host::Media {
public:
    explicit DeferredMedia(const MediaSetup& setup);

    void warmUp() override;
    std::shared_ptr<host::MoviePlayback> createMoviePlayback(const std::string& url) override;
    host::Result<std::shared_ptr<host::Playback>>
    createAudioPlayback(const std::string& url) override;
    host::Result<std::unique_ptr<host::AudioFileReader>>
    openAudioFile(const std::string& path) override;
    host::Result<std::string> audioRoute() override;

private:
    DeferredService<host::Media, CreateMedia> media_;
};

}
