#include "audio/OvoAudioFileReading.h"

#include <utility>

namespace vistrel {

namespace {

/// Well below a frame of 16 ms, even if the last file is slow.
constexpr double kSecondsATurn = 0.004;
constexpr double kPause = 0.012;
constexpr int kFilesATurn = 50;

}

OvoAudioFileReading::OvoAudioFileReading(std::vector<std::shared_ptr<OvoAudioFile>> files)
    : files_(std::move(files)) {
    scheduleNext();
}

OvoAudioFileReading::~OvoAudioFileReading() {
    NSRunLoop::cancelPerform(token_);
}

void OvoAudioFileReading::scheduleNext() {
    while (next_ < files_.size() && files_[next_]->isRead())
        ++next_;
    token_ =
        next_ < files_.size() ? NSRunLoop::performAfterDelay(kPause, [this] { readSome(); }) : 0;
}

void OvoAudioFileReading::readSome() {
    const double end = NSRunLoop::now() + kSecondsATurn;
    for (int i = 0; i < kFilesATurn && next_ < files_.size(); ++i) {
        files_[next_++]->readIfNeeded();
        if (NSRunLoop::now() >= end)
            break;
    }
    scheduleNext();
}

}
