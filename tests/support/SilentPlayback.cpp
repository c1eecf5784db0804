#include "tests/support/SilentMedia.h"

#include <algorithm>
#include <utility>

namespace vistrel::support {

SilentPlayback::SilentPlayback(SilentMedia& media, std::string url)
    : media_(media)
    , url_(std::move(url))
    , item_(media.items_[url_]) {
    media_.players_.push_back(this);
}

SilentPlayback::~SilentPlayback() {
    media_.loop_.cancel(pending_);
    std::erase(media_.players_, this);
}

void SilentPlayback::prepare() {
    calls_.emplace_back("prepare");
    if (!item_.failure.empty()) {
        pending_ = media_.loop_.schedule(0, [this] { fail(item_.failure); });
    } else if (item_.readyByItself && !ready_) {
        pending_ = media_.loop_.schedule(0, [this] { becomeReady(); });
    }
}

bool SilentPlayback::play() {
    calls_.emplace_back("play");
    if (!item_.failure.empty())
        return false;
    if (playing_)
        return true;
    playing_ = true;
    playingSince_ = media_.loop_.now();
    if (ready_ || item_.readyByItself) {
        const bool announces = !ready_;
        ready_ = true;
        media_.loop_.cancel(pending_);
        scheduleEnd();
        if (announces && client_)
            media_.loop_.schedule(0, [client = client_] { client->playbackDidBecomeReady(); });
    }
    return true;
}

void SilentPlayback::halt() {
    position_ = currentTime();
    playing_ = false;
    media_.loop_.cancel(std::exchange(pending_, 0));
}

void SilentPlayback::pause() {
    calls_.emplace_back("pause");
    halt();
}

void SilentPlayback::stop() {
    calls_.emplace_back("stop");
    halt();
}

double SilentPlayback::currentTime() const {
    if (!playing_ || !ready_)
        return position_;
    return std::min(position_ + media_.loop_.now() - playingSince_, item_.duration);
}

void SilentPlayback::setCurrentTime(double seconds) {
    calls_.emplace_back("seek");
    const bool playing = playing_;
    halt();
    position_ = std::clamp(seconds, 0.0, item_.duration);
    playing_ = playing;
    playingSince_ = media_.loop_.now();
    if (playing_ && ready_)
        scheduleEnd();
}

double SilentPlayback::duration() const {
    return ready_ ? item_.duration : 0;
}

void SilentPlayback::scheduleEnd() {
    pending_ = media_.loop_.schedule(item_.duration - position_, [this] { end(); });
}

void SilentPlayback::becomeReady() {
    ready_ = true;
    pending_ = 0;
    playingSince_ = media_.loop_.now();
    if (playing_)
        scheduleEnd();
    if (client_)
        client_->playbackDidBecomeReady();
}

void SilentPlayback::end() {
    halt();
    position_ = item_.duration;
    if (client_)
        client_->playbackDidEnd();
}

void SilentPlayback::fail(const std::string& message) {
    halt();
    if (client_)
        client_->playbackDidFail(message);
}

void SilentPlayback::stall(bool stalled) {
    if (client_)
        client_->playbackStalled(stalled);
}

void SilentPlayback::interrupt(bool begins) {
    if (begins)
        halt();
    if (client_)
        client_->playbackInterrupted(begins);
}

}
