#include "platform/media/MPMoviePlayerController.h"

#include "platform/media/MPMovieControls.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UIWindow.h"
#include "tests/media/MediaTest.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
            events_.push_back("finished " +
                              (reason ? std::to_string(reason->integerValue()) : "without reason"));
            if (onFinish_)
                onFinish_();
        }
    }

    void makePlayer() {
        player_ = MPMoviePlayerController::withContentURL(*NSURL::URLWithString(kFilm));
    }

    /// As the video screen does it: full screen, turned, in a window.
    void showPlaying() {
        media().at(kFilm).duration = 90;
        window_ = std::make_shared<UIWindow>();
        window_->makeKeyAndVisible();
        makePlayer();
        player_->setControlStyle(MPMovieControlStyle::Fullscreen);
        player_->setFullscreen(true);
        player_->view()->setFrame(CGRectMake(0, 0, 480, 320));
        screen_ = std::make_shared<UIView>(CGRectMake(0, 0, 480, 320));
        screen_->setCenter({160, 240});
        screen_->setTransform(CGAffineTransformMakeRotation(1.5707964F));
        window_->addSubview(screen_);
        screen_->addSubview(player_->view());
        player_->prepareToPlay();
        turn();
        player_->play();
        layout(*window_);
        events_.clear();
    }

    static void layout(UIView& view) {
        view.layoutIfNeeded();
        for (const auto& subview : view.subviews())
            layout(*subview);
    }

    template <typename T>
    static void collect(UIView& view, std::vector<T*>& found) {
        if (auto* wanted = dynamic_cast<T*>(&view))
            found.push_back(wanted);
        for (const auto& subview : view.subviews())
            collect(*subview, found);
    }
    template <typename T>
    std::vector<T*> all() {
        std::vector<T*> found;
        collect(*player_->view(), found);
        return found;
    }
    MPMovieControls& controls() { return *all<MPMovieControls>().at(0); }

    std::vector<std::string> texts() {
        std::vector<std::string> result;
        for (UILabel* label : all<UILabel>())
            if (label->text().find(':') != std::string::npos)
                result.push_back(label->text());
        return result;
    }

    /// A tap at a point of the turned 480 x 320 picture.
    void tap(double x, double y) {
        const CGPoint point = player_->view()->convertPointToView({x, y}, nullptr);
        auto& events = UIApplication::sharedApplication().events();
        events.sendTouch(UITouchPhase::Began, point, loop().now());
        events.sendTouch(UITouchPhase::Ended, point, loop().now());
    }

    bool key(UIKeyCode code) {
        UIKey pressed;
        pressed.code = code;
        return UIApplication::sharedApplication().events().sendKey(pressed);
    }

    std::vector<std::string> events_;
    std::function<void()> onFinish_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UIView> screen_;
    std::shared_ptr<MPMoviePlayerController> player_;
};

TEST_F(MPMoviePlayerControllerTest, TheNewerInterfaceTellsItsLoadStateAndOneEnd) {
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
    window_ = std::make_shared<UIWindow>();
    window_->makeKeyAndVisible();
    media().at(kFilm).duration = 5;
    makePlayer();
    EXPECT_FALSE(player_->offersLoadState());
    turn();
    EXPECT_THAT(events_, ElementsAre("preloaded"));
    EXPECT_EQ(player_->view()->superview(), nullptr);
    player_->play();
    EXPECT_TRUE(player_->view()->isDescendantOfView(*window_));
    EXPECT_TRUE(UIApplication::sharedApplication().isStatusBarHidden());
    const CGRect frame = player_->view()->frame();
    EXPECT_NEAR(frame.size.width, 320, 1e-6);
    EXPECT_NEAR(frame.size.height, 480, 1e-6);
    advance(6);
    EXPECT_THAT(events_, ElementsAre("preloaded", "finished 0"));
    EXPECT_EQ(player_->view()->superview(), nullptr);
}

TEST_F(MPMoviePlayerControllerTest, WhatCannotBePlayedEndsOnceWithTheErrorReason) {
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
    EXPECT_THAT(logLines(), testing::Contains(testing::HasSubstr("This is a text file.")));
}

TEST_F(MPMoviePlayerControllerTest, DoneEndsWithTheUsersReasonAndThePlayerMayGoThere) {
    showPlaying();
    onFinish_ = [this] {
        player_->view()->removeFromSuperview();
        player_.reset();
    };
    tap(30, 20);
    EXPECT_THAT(events_, ElementsAre("finished 2"));
    EXPECT_TRUE(media().players().empty());
    advance(100);
    EXPECT_THAT(events_, ElementsAre("finished 2"));
}

TEST_F(MPMoviePlayerControllerTest, ControlsFadeAfterFourSecondsOfPlayingAndATouchBringsThemBack) {
    showPlaying();
    advance(3.9);
    EXPECT_TRUE(controls().areShown());
    advance(0.2);
    EXPECT_FALSE(controls().areShown());
    tap(30, 20); // where Done stood
    EXPECT_THAT(events_, IsEmpty());
    EXPECT_TRUE(controls().areShown());
    tap(240, 160);
    EXPECT_FALSE(controls().areShown());
    tap(240, 160);
    player_->pause();
    advance(60);
    EXPECT_TRUE(controls().areShown());
}

TEST_F(MPMoviePlayerControllerTest, TimesCountAndTheSliderFollows) {
    showPlaying();
    advance(7.5);
    EXPECT_THAT(texts(), ElementsAre("0:07", "-1:23"));
    const auto sliders = all<UISlider>();
    ASSERT_EQ(sliders.size(), 2u);
    EXPECT_FLOAT_EQ(sliders[0]->maximumValue(), 90);
    EXPECT_NEAR(sliders[0]->value(), 7.5, 0.3);
}

TEST_F(MPMoviePlayerControllerTest, DraggingTheSliderSeeks) {
    showPlaying();
    player_->pause();
    UISlider* slider = all<UISlider>().at(0);
    const CGRect thumb = slider->thumbRect();
    const CGPoint from = slider->convertPointToView(
        {thumb.origin.x + thumb.size.width / 2, thumb.origin.y + thumb.size.height / 2}, nullptr);
    const CGPoint middle = slider->convertPointToView(
        {slider->bounds().size.width / 2, thumb.origin.y + thumb.size.height / 2}, nullptr);
    auto& events = UIApplication::sharedApplication().events();
    events.sendTouch(UITouchPhase::Began, from, 1);
    events.sendTouch(UITouchPhase::Moved, middle, 1.1);
    events.sendTouch(UITouchPhase::Ended, middle, 1.2);
    EXPECT_NEAR(player_->currentPlaybackTime(), 45, 3);
}

TEST_F(MPMoviePlayerControllerTest, KeysPlayPauseSeekChangeTheVolumeAndLeave) {
    showPlaying();
    advance(30);
    EXPECT_TRUE(key(UIKeyCode::Space));
    EXPECT_FALSE(media().player()->isPlaying());
    EXPECT_TRUE(key(UIKeyCode::Right));
    EXPECT_NEAR(player_->currentPlaybackTime(), 40, 0.01);
    EXPECT_TRUE(key(UIKeyCode::Left));
    EXPECT_TRUE(key(UIKeyCode::Left));
    EXPECT_NEAR(player_->currentPlaybackTime(), 20, 0.01);
    EXPECT_TRUE(key(UIKeyCode::Down));
    EXPECT_NEAR(media().player()->volume(), 0.9, 1e-6);
    EXPECT_TRUE(key(UIKeyCode::Space));
    EXPECT_TRUE(media().player()->isPlaying());
    EXPECT_TRUE(key(UIKeyCode::Escape));
    EXPECT_THAT(events_, ElementsAre("finished 2"));
}

TEST_F(MPMoviePlayerControllerTest, MediaKeysControlItAndTheScreenStaysAwakeWhileItPlays) {
    using State = host::NowPlaying::State;
    showPlaying();
    ASSERT_TRUE(mediaControls().client());
    auto& keys = *mediaControls().client();
    const auto& told = mediaControls().nowPlaying();
    EXPECT_EQ(told.title, "film.mp4");
    EXPECT_EQ(told.url, kFilm);
    EXPECT_EQ(told.duration, 90);
    const struct {
        std::function<void()> act;
        bool plays;
        double position;
    } steps[] = {{[] {}, true, 0},
                 {[&] { keys.mediaPause(); }, false, 0},
                 {[&] { keys.mediaPlay(); }, true, 0},
                 {[&] { keys.mediaPlay(); }, true, 0},
                 {[&] { keys.mediaSeek(60); }, true, 60},
                 {[&] { media().player()->interrupt(true); }, false, 60},
                 {[&] { keys.mediaPlay(); }, true, 60},
                 {[&] { keys.mediaStop(); }, false, 0}};
    for (const auto& step : steps) {
        step.act();
        EXPECT_EQ(media().player()->isPlaying(), step.plays);
        EXPECT_EQ(desktop().isIdleTimerDisabled(), step.plays);
        EXPECT_EQ(told.state, step.plays ? State::Playing : State::Paused);
        EXPECT_EQ(keys.mediaPosition(), step.position);
    }
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(60, 0));
    keys.mediaSetVolume(0.25F);
    EXPECT_EQ(told.volume, 0.25F);
    keys.mediaPlay();
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
        UIView* shown = nullptr;
        for (const auto& subview : player_->view()->subviews())
            if (subview->foreignContent())
                shown = subview.get();
        ASSERT_TRUE(shown) << picture.width;
        EXPECT_NEAR(shown->frame().origin.x, picture.frame.origin.x, 1e-6);
        EXPECT_NEAR(shown->frame().origin.y, picture.frame.origin.y, 1e-6);
        EXPECT_NEAR(shown->frame().size.width, picture.frame.size.width, 1e-6);
        EXPECT_NEAR(shown->frame().size.height, picture.frame.size.height, 1e-6);
        player_->view()->removeFromSuperview();
    }
}

TEST_F(MPMoviePlayerControllerTest, AnInterruptionLeavesItPausedWithItsControls) {
    showPlaying();
    advance(5);
    media().player()->interrupt(true);
    EXPECT_TRUE(controls().areShown());
    media().player()->interrupt(false);
    advance(10);
    EXPECT_NEAR(player_->currentPlaybackTime(), 5, 0.01);
    EXPECT_TRUE(controls().areShown());
    EXPECT_THAT(events_, IsEmpty());
}

}
}
