#pragma once
#include "platform/host/Media.h"
#include "platform/linux/media/GstPlayback.h"
#include "platform/linux/media/MediaSetup.h"
#include "platform/linux/media/SoundOutput.h"

#include <memory>
#include <string>
#include <thread>

namespace vistrel {

/// The players (GStreamer) and the tag reader (TagLib). GStreamer starts with the first player or a
/// warm-up.
class GstMedia : public host::Media {
public:
    explicit GstMedia(const MediaSetup& setup);

    void warmUp() override;
    std::shared_ptr<host::MoviePlayback> createMoviePlayback(const std::string& url) override;
    host::Result<std::shared_ptr<host::Playback>>
    createAudioPlayback(const std::string& url) override;
    host::Result<std::unique_ptr<host::AudioFileReader>>
    openAudioFile(const std::string& path) override;
    host::Result<std::string> audioRoute() override;

private:
    PlaybackSource sourceOf(const std::string& url) const;

    MediaSetup setup_;
    SoundOutput sound_;
    std::jthread warmingUp_;
};

}
