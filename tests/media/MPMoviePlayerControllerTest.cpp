#include "platform/media/MPMoviePlayerController.h"

#include "platform/uikit/UISlider.h"
#include "tests/media/MediaTest.h"

namespace vistrel {
namespace {

constexpr const char* kFilm = "http://site/film.mp4";

class MPMoviePlayerControllerTest : public MediaTest {
protected:
    MPMoviePlayerControllerTest() {
        for (const char* name : {MPMoviePlayerLoadStateDidChangeNotification,
                                 MPMoviePlayerContentPreloadDidFinishNotification,
                                 MPMoviePlayerPlaybackDidFinishNotification})
            NSNotificationCenter::defaultCenter().addObserver(
                this, name, nullptr, [this](const NSNotification& note) { heard(note); });
    }
    ~MPMoviePlayerControllerTest() override {
        NSNotificationCenter::defaultCenter().removeObserver(this);
    }

    void heard(const NSNotification& note) {
        if (note.name == MPMoviePlayerLoadStateDidChangeNotification) {
            events_.push_back("state " + std::to_string(player_->loadState()));
        } else if (note.name == MPMoviePlayerContentPreloadDidFinishNotification) {
            events_.emplace_back("preloaded");
        } else {
            const Value* reason =
                note.userInfo.find("MPMoviePlayerPlaybackDidFinishReasonUserInfoKey");
            events_.push_back(reason ? "finished " + std::to_string(reason->integerValue())
                                     : "finished");
            if (onFinish_)
                onFinish_();
        }
    }

    void makePlayer() {
        player_ = MPMoviePlayerController::withContentURL(*NSURL::URLWithString(kFilm));
    }

    /// As the video screen does: full screen, rotated, in a window.
    void showPlaying() {
        media().at(kFilm).duration = 90;
        makePlayer();
        player_->setControlStyle(MPMovieControlStyle::Fullscreen);
        player_->setFullscreen(true);
        player_->view()->setFrame(CGRectMake(0, 0, 480, 320));
        if (screen_)
            screen_->removeFromSuperview();
        screen_ = add<UIView>(CGRectMake(0, 0, 480, 320));
        screen_->setCenter({160, 240});
        screen_->setTransform(CGAffineTransformMakeRotation(1.5707964F));
        screen_->addSubview(player_->view());
        player_->prepareToPlay();
        turn();
        player_->play();
        screen().layoutIfNeeded();
        events_.clear();
    }

    bool areControlsShown() { return find(UIAccessibilityRole::Button, "Done") != nullptr; }

    /// At a point of the rotated 480 x 320 picture.
    void tapPicture(double x, double y) {
        tap(player_->view()->convertPointToView({x, y}, nullptr));
    }

    /// "30 s, volume 10, plays"; the desktop has been told the same and stays awake meanwhile.
    std::string state() {
        const auto& told = mediaControls().nowPlaying();
        const auto& film = *media().player();
        EXPECT_EQ(desktop().isIdleTimerDisabled(), film.isPlaying());
        EXPECT_EQ(mediaControls().client() && told.state == host::NowPlaying::State::Playing,
                  film.isPlaying());
        EXPECT_EQ(told.volume, film.volume());
        return std::to_string(std::lround(player_->currentPlaybackTime())) + " s, volume " +
               std::to_string(std::lround(10 * film.volume())) +
               (film.isPlaying() ? ", plays" : "");
    }
    void expect(const std::vector<Step>& steps) {
        expectSteps(steps, [this] { return state(); });
    }

    static CGRect rounded(const CGRect& rect) {
        return CGRectMake(std::round(rect.origin.x), std::round(rect.origin.y),
                          std::round(rect.size.width), std::round(rect.size.height));
    }

    std::vector<std::string> events_;
    std::function<void()> onFinish_;
    std::shared_ptr<UIView> screen_;
    std::shared_ptr<MPMoviePlayerController> player_;
};

TEST_F(MPMoviePlayerControllerTest, TheNewerInterfaceReportsItsLoadStateAndOneEnd) {
    media().at(kFilm).duration = 5;
    makePlayer();
    EXPECT_TRUE(player_->offersLoadState());
    turn();
    EXPECT_EQ(player_->loadState(), 0u);
    player_->prepareToPlay();
    turn();
    EXPECT_THAT(events_, ElementsAre("state 3"));
    player_->play();
    advance(2);
    media().player()->stall(true);
    media().player()->stall(false);
    EXPECT_THAT(events_, ElementsAre("state 3", "state 5", "state 3"));
    EXPECT_NEAR(player_->currentPlaybackTime(), 2, 0.01);
    advance(10);
    EXPECT_EQ(events_.size(), 4u);
    EXPECT_EQ(events_.back(), "finished 0");
}

TEST_F(MPMoviePlayerControllerTest, TheOlderInterfacePreloadsAtOnceAndShowsItselfTurned) {
    MPMoviePlayerController::setOfferedInterface(MPMoviePlayerController::Interface::Preload);
    media().at(kFilm).duration = 5;
    makePlayer();
    EXPECT_FALSE(player_->offersLoadState());
    turn();
    EXPECT_THAT(events_, ElementsAre("preloaded"));
    EXPECT_EQ(player_->view()->superview(), nullptr);
    player_->play();
    EXPECT_TRUE(player_->view()->isDescendantOfView(window()));
    EXPECT_TRUE(application().isStatusBarHidden());
    EXPECT_EQ(rounded(player_->view()->frame()), CGRectMake(0, 0, 320, 480));
    advance(6);
    EXPECT_THAT(events_, ElementsAre("preloaded", "finished 0"));
    EXPECT_EQ(player_->view()->superview(), nullptr);
}

TEST_F(MPMoviePlayerControllerTest, AnUnplayableFilmEndsOnceWithTheErrorReason) {
    for (const auto interface : {MPMoviePlayerController::Interface::LoadStates,
                                 MPMoviePlayerController::Interface::Preload}) {
        MPMoviePlayerController::setOfferedInterface(interface);
        events_.clear();
        media().at(kFilm).failure = "This is a text file.";
        makePlayer();
        player_->prepareToPlay();
        advance(1);
        player_->play();
        advance(1);
        EXPECT_THAT(events_, ElementsAre("finished 1"));
    }
    EXPECT_THAT(logLines(), Contains(HasSubstr("This is a text file.")));
}

TEST_F(MPMoviePlayerControllerTest, DoneEndsWithTheUsersReasonAndThePlayerMayBeDestroyed) {
    showPlaying();
    onFinish_ = [this] {
        player_->view()->removeFromSuperview();
        player_.reset();
    };
    tapPicture(30, 20);
    EXPECT_THAT(events_, ElementsAre("finished 2"));
    EXPECT_TRUE(media().players().empty());
    advance(100);
    EXPECT_THAT(events_, ElementsAre("finished 2"));
}

TEST_F(MPMoviePlayerControllerTest, ControlsFadeWhilePlayingAndATouchOrAnInterruptionShowsThem) {
    showPlaying();
    advance(3.9);
    EXPECT_TRUE(areControlsShown());
    advance(0.2);
    EXPECT_FALSE(areControlsShown());
    tapPicture(30, 20); // where Done was
    EXPECT_TRUE(areControlsShown());
    tapPicture(240, 160);
    EXPECT_FALSE(areControlsShown());
    media().player()->interrupt(true);
    EXPECT_TRUE(areControlsShown());
    media().player()->interrupt(false);
    advance(60);
    EXPECT_NEAR(player_->currentPlaybackTime(), 4.1, 0.01) << "paused";
    EXPECT_TRUE(areControlsShown());
    EXPECT_THAT(events_, IsEmpty());
}

TEST_F(MPMoviePlayerControllerTest, TimesAndSliderFollowTheFilmAndDraggingSeeks) {
    showPlaying();
    advance(7.5);
    tapPicture(240, 160); // the controls have faded
    EXPECT_THAT(labels(UIAccessibilityRole::Label, *player_->view()),
                ElementsAre("Done", "0:07", "-1:23"));
    const auto position = find(UIAccessibilityRole::Slider, "Position");
    ASSERT_TRUE(position);
    const auto& slider = dynamic_cast<UISlider&>(*position);
    EXPECT_FLOAT_EQ(slider.maximumValue(), 90);
    EXPECT_NEAR(slider.value(), 7.5, 0.3);
    player_->pause();
    const CGRect thumb = slider.thumbRect();
    const CGPoint middle{slider.bounds().midX(), thumb.midY()};
    drag(slider.convertPointToView({thumb.midX(), thumb.midY()}, nullptr),
         slider.convertPointToView(middle, nullptr));
    EXPECT_NEAR(player_->currentPlaybackTime(), 45, 3);
    const auto& calls = media().player()->calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "seek"), 1) << "only where it was let go";
    EXPECT_GE(std::count(calls.begin(), calls.end(), "scrub"), 1);
    EXPECT_EQ(calls.back(), "seek");
}

TEST_F(MPMoviePlayerControllerTest, KeysPlayPauseSeekChangeTheVolumeAndLeave) {
    showPlaying();
    expect({{"wait 30", "30 s, volume 10, plays"},
            {"key Space", "30 s, volume 10"},
            {"key Right", "40 s, volume 10"},
            {"key Left 2", "20 s, volume 10"},
            {"key Down", "20 s, volume 9"},
            {"key Space", "20 s, volume 9, plays"},
            {"key Home", "0 s, volume 9, plays"},
            {"key Escape", "0 s, volume 9"}});
    EXPECT_THAT(events_, ElementsAre("finished 2"));
}

TEST_F(MPMoviePlayerControllerTest, MediaKeysControlItAndTheScreenStaysAwakeWhileItPlays) {
    showPlaying();
    ASSERT_TRUE(mediaControls().client());
    auto& keys = *mediaControls().client();
    const auto& told = mediaControls().nowPlaying();
    EXPECT_EQ(told.title + " " + told.url, std::string("film.mp4 ") + kFilm);
    EXPECT_EQ(told.duration, 90);
    EXPECT_TRUE(told.canPlay);
    expect({{"", "0 s, volume 10, plays"},
            {"media pause", "0 s, volume 10"},
            {"media play", "0 s, volume 10, plays"},
            {"media play", "0 s, volume 10, plays"}});
    keys.mediaSeek(60);
    EXPECT_EQ(state(), "60 s, volume 10, plays");
    EXPECT_EQ(keys.mediaPosition(), 60);
    media().player()->interrupt(true);
    expect({{"", "60 s, volume 10"},
            {"media play", "60 s, volume 10, plays"},
            {"media stop", "0 s, volume 10"}});
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(60, 0));
    keys.mediaSetVolume(0.3F);
    expect({{"media play", "0 s, volume 3, plays"}});
    player_->stop();
    EXPECT_FALSE(desktop().isIdleTimerDisabled());
    EXPECT_FALSE(mediaControls().client());
}

TEST_F(MPMoviePlayerControllerTest, ThePictureKeepsItsProportionsOnBlack) {
    const struct {
        int width;
        int height;
        CGRect frame;
    } pictures[] = {{640, 360, CGRectMake(0, 25, 480, 270)},
                    {300, 400, CGRectMake(120, 0, 240, 320)},
                    {480, 320, CGRectMake(0, 0, 480, 320)}};
    for (const auto& picture : pictures) {
        media().at(kFilm).pictureWidth = picture.width;
        media().at(kFilm).pictureHeight = picture.height;
        showPlaying();
        const auto& parts = player_->view()->subviews();
        const auto shown = std::ranges::find_if(
            parts, [](const auto& part) { return part->foreignContent() != nullptr; });
        ASSERT_NE(shown, parts.end());
        EXPECT_EQ(rounded((*shown)->frame()), picture.frame);
    }
}

}
}
