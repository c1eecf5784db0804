#pragma once
#include "audio/OvoAudioPlayerController.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/media/AudioSession.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UITableView.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {

/// Tests of the music player on screen: a window, a screen that presents it, and tracks.
class PlayerTest : public support::ScreenTest {
protected:
    PlayerTest() {
        deterministicHost().host.resourcePath = RESOURCES_FOLDER;
        window().addSubview(presenter_->view());
    }
    ~PlayerTest() override {
        presenter_->view()->removeFromSuperview();
        AudioSessionReset();
    }

    static NSURL trackURL(int number) { return NSURL::fileURLWithPath(trackPath(number)); }
    void setLength(int track, double seconds) {
        media().at(trackURL(track).absoluteString()).duration = seconds;
    }
    /// Sets the title "Title 3" and so on, and the track's length.
    void setTags(int track, double seconds) {
        const std::string number = std::to_string(track);
        media().setTags(trackPath(track),
                        {"Title " + number, "Artist " + number, "Album " + number, seconds});
        setLength(track, seconds);
    }

    /// Creates the screen without presenting it. The tracks "0.mp3", "1.mp3" and so on are a
    /// minute long.
    OvoAudioPlayerController& make(int count, std::uint32_t index) {
        OvoAudioPlayerController::SoundFiles tracks;
        for (int i = 0; i < count; ++i)
            tracks.push_back(
                std::make_shared<OvoAudioFile>(trackURL(i), OvoAudioFile::Reading::WhenAsked));
        player_ = OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(std::move(tracks),
                                                                                 kFolder, index);
        return *player_;
    }
    void present() {
        presenter_->presentModalViewController(player_, true);
        advance(1);
    }
    /// Creates and presents the screen, which plays.
    OvoAudioPlayerController& open(int count, std::uint32_t index = 0) {
        make(count, index);
        presenter_->presentModalViewController(player_, false);
        return *player_;
    }
    /// Dismisses and destroys the screen.
    void close() {
        player_->dismissAudioPlayer();
        advance(1);
        player_ = nullptr;
    }
    OvoAudioPlayerController& player() { return *player_; }
    const OvoAudioPlayerViews& views() { return player_->views(); }
    /// Number of the track that the newest player plays.
    int trackPlaying() {
        const auto* playing = media().player();
        return playing ? std::stoi(NSURL::URLWithString(playing->url())->lastPathComponent()) : -1;
    }
    bool isPlaying() { return player_->player() && player_->player()->isPlaying(); }
    /// What is heard and which button is there: "1 plays at 30 s, Pause", "1 rests at 0 s, Play",
    /// "silence, Play". The screen's timer runs while something plays.
    std::string state() {
        std::string text = "silence";
        if (player_->player())
            text = std::to_string(trackPlaying()) + (isPlaying() ? " plays" : " rests") + " at " +
                   std::to_string(std::lround(player_->player()->currentTime())) + " s";
        EXPECT_EQ(media().players().size(), player_->player() ? 1U : 0U);
        EXPECT_EQ(player_->updateTimer() != nullptr, isPlaying());
        for (const auto& button : {views().playButton, views().pauseButton})
            if (button->superview() == player_->view().get())
                text += ", " + button->accessibilityElement().label;
        return text;
    }
    /// What the slider shows and the player has, in hundredths: "30, 100".
    std::string volumes() {
        return std::to_string(std::lround(views().volumeSlider->value() * 100)) + ", " +
               std::to_string(std::lround(player_->player()->volume() * 100));
    }
    /// The labels: "Title 1, Artist 1, Album 1 | 1:15 -2:05 | 2 of 3", from the second bar on once
    /// the overlay has been shown.
    std::string texts() {
        const auto& v = views();
        std::string text =
            v.titleLabel->text() + ", " + v.artistLabel->text() + ", " + v.albumLabel->text();
        if (v.overlayView)
            text += " | " + v.currentTime->text() + " " + v.duration->text() + " | " +
                    v.indexLabel->text();
        return text;
    }
    static void moveTo(UISlider& slider, float value) {
        slider.setValue(value);
        slider.sendActionsForControlEvents(UIControlEventValueChanged);
    }
    void showOverlay() {
        tapButton("Cover");
        advance(0.5);
    }

    UIViewController& presenter() { return *presenter_; }

private:
    static constexpr const char* kFolder = "/var/mobile/Library/Downloads/";
    static std::string trackPath(int number) { return kFolder + std::to_string(number) + ".mp3"; }

    std::shared_ptr<UIViewController> presenter_ = std::make_shared<UIViewController>();
    std::shared_ptr<OvoAudioPlayerController> player_;
};

}
