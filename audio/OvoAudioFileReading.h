#pragma once
#include "audio/OvoAudioFile.h"
#include "platform/foundation/NSRunLoop.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace vistrel {

/// Reads the tags of a long list a few files at a time, with pauses for the screen's frames, until
/// all are read or it is destroyed.
class OvoAudioFileReading {
public:
    explicit OvoAudioFileReading(std::vector<std::shared_ptr<OvoAudioFile>> files);
    ~OvoAudioFileReading();
    OvoAudioFileReading(const OvoAudioFileReading&) = delete;
    OvoAudioFileReading& operator=(const OvoAudioFileReading&) = delete;

private:
    void readSome();
    void scheduleNext();

    std::vector<std::shared_ptr<OvoAudioFile>> files_;
    std::size_t next_ = 0;
    NSRunLoop::Token token_ = 0;
};

}
