#pragma once
#include "audio/OvoAudioPlayerController.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UITableView.h"
#include "tests/support/ui/ScreenTest.h"

#include <memory>
#include <string>

namespace vistrel {

/// Tests of the music player on screen: a window, a screen that presents it, and tracks.
class PlayerTest : public support::ScreenTest {
protected:
    PlayerTest();
    ~PlayerTest() override;

    static NSURL trackURL(int number);
    /// Tracks "0.mp3", "1.mp3" and so on, a minute long each.
    static OvoAudioPlayerController::SoundFiles tracks(int count);
    void setLength(int track, double seconds);
    /// Sets the title "Title 3" and so on, and the track's length.
    void setTags(int track, double seconds);

    /// Creates the screen without presenting it.
    OvoAudioPlayerController& make(int count, std::uint32_t index);
    void present();
    /// Creates and presents the screen, which plays.
    OvoAudioPlayerController& open(int count, std::uint32_t index = 0);
    /// Dismisses and destroys the screen.
    void close();
    OvoAudioPlayerController& player() { return *player_; }
    const OvoAudioPlayerViews& views() { return player_->views(); }
    /// Number of the track that the newest player plays.
    int trackPlaying();
    bool isPlaying();
    /// The time labels' texts, "1:15 -2:05".
    std::string times();
    using ScreenTest::tap;
    void tap(UIControl& control);
    void showOverlay();

    UIViewController& presenter() { return *presenter_; }

private:
    std::shared_ptr<UIViewController> presenter_ = std::make_shared<UIViewController>();
    std::shared_ptr<OvoAudioPlayerController> player_;
};

}
