#include "tests/audio/PlayerTest.h"

#include "platform/graphics/UIImage.h"
#include "platform/media/AudioSession.h"

namespace vistrel {

namespace {

constexpr const char* kFolder = "/var/mobile/Library/Downloads/";

const bool kForgets = support::HostTest::addResetHook(AudioSessionReset);

std::string trackPath(int number) {
    return kFolder + std::to_string(number) + ".mp3";
}

}

PlayerTest::PlayerTest() {
    deterministicHost().host.resourcePath = RESOURCES_FOLDER;
    window().addSubview(presenter_->view());
}

PlayerTest::~PlayerTest() {
    presenter_->view()->removeFromSuperview();
}

NSURL PlayerTest::trackURL(int number) {
    return NSURL::fileURLWithPath(trackPath(number));
}

OvoAudioPlayerController::SoundFiles PlayerTest::tracks(int count) {
    OvoAudioPlayerController::SoundFiles files;
    for (int i = 0; i < count; ++i)
        files.push_back(
            std::make_shared<OvoAudioFile>(trackURL(i), OvoAudioFile::Reading::WhenAsked));
    return files;
}

void PlayerTest::setLength(int track, double seconds) {
    media().at(trackURL(track).absoluteString()).duration = seconds;
}

void PlayerTest::setTags(int track, double seconds) {
    const std::string number = std::to_string(track);
    media().setTags(trackPath(track),
                    {"Title " + number, "Artist " + number, "Album " + number, seconds});
    setLength(track, seconds);
}

OvoAudioPlayerController& PlayerTest::make(int count, std::uint32_t index) {
    player_ = OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(tracks(count), kFolder,
                                                                             index);
    return *player_;
}

void PlayerTest::present() {
    presenter_->presentModalViewController(player_, true);
    advance(1);
}

OvoAudioPlayerController& PlayerTest::open(int count, std::uint32_t index) {
    make(count, index);
    presenter_->presentModalViewController(player_, false);
    return *player_;
}

void PlayerTest::close() {
    player_->dismissAudioPlayer();
    advance(1);
    player_ = nullptr;
}

int PlayerTest::trackPlaying() {
    const auto* playing = media().player();
    return playing ? std::stoi(NSURL::URLWithString(playing->url())->lastPathComponent()) : -1;
}

bool PlayerTest::isPlaying() {
    return player_->player() && player_->player()->isPlaying();
}

std::string PlayerTest::times() {
    return views().currentTime->text() + " " + views().duration->text();
}

void PlayerTest::tap(UIControl& control) {
    if (control.isEnabled())
        control.sendActionsForControlEvents(UIControlEventTouchUpInside);
}

void PlayerTest::showOverlay() {
    tap(*views().artworkView);
    advance(0.5);
}

}
