#include "tests/support/SilentMedia.h"

#include <cerrno>

namespace vistrel::support {

namespace {

class FixedTags : public host::AudioFileReader {
public:
    FixedTags(Info info, std::vector<std::byte> id3Tag)
        : info_(std::move(info))
        , id3Tag_(std::move(id3Tag)) {}
    host::Result<std::vector<std::byte>> id3Tag() override { return id3Tag_; }
    host::Result<Info> info() override { return info_; }

private:
    Info info_;
    std::vector<std::byte> id3Tag_;
};

}

std::shared_ptr<host::MoviePlayback> SilentMedia::createMoviePlayback(const std::string& url) {
    return std::make_shared<SilentPlayback>(*this, url);
}

host::Result<std::shared_ptr<host::Playback>>
SilentMedia::createAudioPlayback(const std::string& url) {
    if (const std::string& failure = items_[url].failure; !failure.empty())
        return host::Failure{EINVAL, failure};
    auto playback = std::make_shared<SilentPlayback>(*this, url);
    playback->becomeReady();
    return std::shared_ptr<host::Playback>(std::move(playback));
}

host::Result<std::unique_ptr<host::AudioFileReader>>
SilentMedia::openAudioFile(const std::string& path) {
    const auto found = tags_.find(path);
    if (found == tags_.end())
        return host::Failure{ENOENT, "No such file or directory"};
    return std::unique_ptr<host::AudioFileReader>(
        std::make_unique<FixedTags>(found->second.info, found->second.id3Tag));
}

void SilentMedia::setTags(const std::string& path, host::AudioFileReader::Info info,
                          std::vector<std::byte> id3Tag) {
    tags_.insert_or_assign(path, Tags{std::move(info), std::move(id3Tag)});
}

}
