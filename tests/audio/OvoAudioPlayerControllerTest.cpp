#include "tests/audio/PlayerTest.h"

#include "platform/foundation/NSTimer.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIKey.h"

namespace vistrel {
namespace {

class OvoAudioPlayerControllerTest : public PlayerTest {
protected:
    NSUserDefaults& defaults() { return NSUserDefaults::standardUserDefaults(); }
    void moveVolumeTo(float value) {
        views().volumeSlider->setValue(value);
        views().volumeSlider->sendActionsForControlEvents(UIControlEventValueChanged);
    }
};

TEST_F(OvoAudioPlayerControllerTest, TheScreenIsBuiltAtOnceAndPlaysWhenItHasAppeared) {
    setTags(1, 200);
    make(3, 1);
    EXPECT_TRUE(player().isViewLoaded());
    EXPECT_EQ(views().titleLabel->text(), "Title 1");
    EXPECT_EQ(views().artistLabel->text(), "Artist 1");
    EXPECT_EQ(views().albumLabel->text(), "Album 1");
    EXPECT_THAT(media().player()->calls(), IsEmpty());
    present();
    EXPECT_EQ(trackPlaying(), 1);
    EXPECT_TRUE(isPlaying());
    EXPECT_EQ(player().player()->numberOfLoops(), 0);
    EXPECT_NE(views().pauseButton->superview(), nullptr);
    EXPECT_EQ(views().playButton->superview(), nullptr);
}

TEST_F(OvoAudioPlayerControllerTest, ReadersAreToldOfEachTrackThatBegins) {
    setTags(0, 60);
    setTags(1, 60);
    open(3);
    tap(*views().pauseButton);
    tap(*views().playButton);
    advance(121);
    EXPECT_THAT(display().announcements,
                ElementsAre("Title 0, Artist 0", "Title 1, Artist 1", "2.mp3"));
}

TEST_F(OvoAudioPlayerControllerTest, OneButtonPausesAndPlays) {
    open(1);
    advance(10);
    tap(*views().pauseButton);
    EXPECT_FALSE(isPlaying());
    EXPECT_EQ(views().pauseButton->superview(), nullptr);
    EXPECT_EQ(views().playButton->superview(), player().view().get());
    EXPECT_FALSE(player().updateTimer());
    advance(5);
    tap(*views().playButton);
    advance(1);
    EXPECT_NEAR(player().player()->currentTime(), 11, 0.001);
    EXPECT_TRUE(player().view()->keyPressed({UIKeyCode::Space, " "}));
    EXPECT_FALSE(isPlaying());
}

TEST_F(OvoAudioPlayerControllerTest, NextAndPreviousCreateAPlayerWithTheSlidersVolume) {
    open(3, 1);
    views().volumeSlider->setValue(0.25F);
    advance(30);
    tap(*views().nextButton);
    EXPECT_EQ(trackPlaying(), 2);
    EXPECT_EQ(media().players().size(), 1U) << "the old one is gone";
    EXPECT_THAT(media().player()->calls(), ElementsAre("prepare", "play"));
    EXPECT_EQ(media().player()->volume(), 0.25F);
    EXPECT_EQ(player().player()->currentTime(), 0);
    tap(*views().nextButton);
    EXPECT_EQ(trackPlaying(), 2) << "the end of the queue";
    tap(*views().previousButton);
    tap(*views().previousButton);
    EXPECT_EQ(trackPlaying(), 0);
    tap(*views().previousButton);
    player().previous();
    EXPECT_EQ(player().selectedIndex(), 0U);
    player().toggleRepeat();
    player().previous();
    EXPECT_EQ(player().selectedIndex(), 0U) << "in every mode";
}

TEST_F(OvoAudioPlayerControllerTest, TheEndOfATrackFollowsTheModesButNeverWraps) {
    const std::tuple<const char*, std::uint32_t, int, std::uint32_t, bool> rows[] = {
        {"off, first", 0, 0, 1, true}, {"off, last", 2, 0, 2, false}, {"all, last", 2, 1, 2, false},
        {"one, first", 0, 2, 0, true}, {"one, last", 2, 2, 2, false},
    };
    for (const auto& [name, index, repeatTaps, then, plays] : rows) {
        SCOPED_TRACE(name);
        open(3, index);
        for (int i = 0; i < repeatTaps; ++i)
            player().toggleRepeat();
        advance(60.5);
        EXPECT_EQ(player().selectedIndex(), then);
        EXPECT_EQ(isPlaying(), plays);
        EXPECT_EQ(static_cast<bool>(player().updateTimer()), plays);
        EXPECT_NEAR(player().player()->currentTime(), plays ? 0.5 : 0, 0.01);
        EXPECT_EQ(views().playButton->superview() == nullptr, plays);
        close();
    }
}

TEST_F(OvoAudioPlayerControllerTest, ShuffleReachesEveryTrackAndLeavesOnePlayer) {
    open(3);
    player().toggleShuffle();
    std::set<int> seen;
    for (int i = 0; i < 200; ++i) {
        tap(*views().nextButton);
        seen.insert(trackPlaying());
    }
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
    EXPECT_EQ(media().players().size(), 1U);
    EXPECT_LT(loop().pendingWork(), 10U);
}

TEST_F(OvoAudioPlayerControllerTest, TheVolumeIsStoredButTheFirstTrackDoesNotUseIt) {
    open(3);
    EXPECT_EQ(views().volumeSlider->value(), 1.0F) << "the player's own";
    moveVolumeTo(0.3F);
    EXPECT_FLOAT_EQ(player().player()->volume(), 0.3F);
    close();

    open(3);
    EXPECT_FLOAT_EQ(views().volumeSlider->value(), 0.3F);
    EXPECT_EQ(player().player()->volume(), 1.0F);
    player().play();
    EXPECT_FLOAT_EQ(views().volumeSlider->value(), 0.3F) << "a refresh keeps it";
    tap(*views().nextButton);
    EXPECT_FLOAT_EQ(player().player()->volume(), 0.3F);
    moveVolumeTo(0);
    close();

    open(3);
    EXPECT_EQ(views().volumeSlider->value(), 1.0F) << "a stored volume of 0 is ignored";
}

TEST_F(OvoAudioPlayerControllerTest, PlaybackResumesAfterAnInterruption) {
    open(1);
    advance(12);
    testing::internal::CaptureStdout();
    media().player()->interrupt(true);
    EXPECT_TRUE(player().interrupted());
    EXPECT_FALSE(isPlaying());
    EXPECT_NEAR(defaults().floatForKey("Interruption"), 12, 0.001);
    interruptionListenerCallback(&player(), 2); // neither a beginning nor an end
    EXPECT_TRUE(player().interrupted());
    advance(100);
    media().player()->interrupt(false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "(apbi) Interruption Detected\n(apei) Interruption ended\n");
    EXPECT_FALSE(player().interrupted());
    EXPECT_TRUE(isPlaying());
    EXPECT_TRUE(defaults().objectForKey("Interruption").isNull());
    advance(1);
    EXPECT_NEAR(player().player()->currentTime(), 13, 0.001);
    interruptionListenerCallback(&player(), 2);
    EXPECT_FALSE(player().interrupted());
}

TEST_F(OvoAudioPlayerControllerTest, OnlyAnInterruptedLastTrackPlaysAgain) {
    open(2);
    media().player()->interrupt(true);
    ASSERT_TRUE(player().interrupted());
    tap(*views().nextButton);
    EXPECT_FALSE(player().interrupted()) << "an interruption ends with its player";
    player().setInterrupted(true);
    media().player()->end();
    advance(1);
    EXPECT_TRUE(isPlaying());
    EXPECT_NEAR(player().player()->currentTime(), 1, 0.01);
    player().setInterrupted(false);
    advance(61);
    EXPECT_FALSE(isPlaying());
    EXPECT_EQ(player().selectedIndex(), 1U);
}

TEST_F(OvoAudioPlayerControllerTest, ADecodeErrorIsShownAndTheQueueContinues) {
    open(2);
    media().player()->fail("bits are missing");
    EXPECT_EQ(alertCount(), 1);
    EXPECT_EQ(alertTitle(), "Decode Error");
    EXPECT_EQ(alertMessage(), "Unable to decode audio file with error: bits are missing");
    EXPECT_THAT(logLines(), testing::IsSupersetOf({HasSubstr("ERROR IN DECODE: "),
                                                   HasSubstr("Playback finished unsuccessfully")}));
    EXPECT_TRUE(tapAlertButton("OK"));
    EXPECT_EQ(trackPlaying(), 1);
    EXPECT_TRUE(isPlaying());
    media().player()->fail("bits are missing");
    EXPECT_EQ(player().selectedIndex(), 1U) << "the last track";
    EXPECT_EQ(views().playButton->superview(), player().view().get());
    EXPECT_FALSE(player().updateTimer());
    EXPECT_NE(mediaControls().nowPlaying().state, host::NowPlaying::State::Playing);
}

TEST_F(OvoAudioPlayerControllerTest,
       AFileThatCannotBeOpenedSilencesTheQueueUnlessMannersAreCareful) {
    for (const bool careful : {false, true}) {
        deterministicHost().settings["manners/careful"] = careful ? "yes" : "no";
        const float volume = careful ? 1 : 0;
        for (const int broken : {0, 1}) {
            media().at(trackURL(broken).absoluteString()).failure = "gone";
            open(3, 0);
            EXPECT_EQ(views().titleLabel->text(), "0.mp3");
            while (player().selectedIndex() < 2)
                tap(*views().nextButton);
            EXPECT_EQ(views().volumeSlider->value(), volume) << broken;
            EXPECT_EQ(player().player()->volume(), volume) << broken;
            close();
        }
    }
}

TEST_F(OvoAudioPlayerControllerTest, AFileThatVanishedLeavesTheScreenWithoutAPlayer) {
    setTags(1, 100);
    media().at(trackURL(1).absoluteString()).failure = "No such file or directory";
    open(3);
    showOverlay();
    tap(*views().nextButton);
    EXPECT_THAT(logLines().back(), HasSubstr("No such file or directory"));
    EXPECT_FALSE(player().player());
    EXPECT_THAT(media().players(), IsEmpty()) << "the old track is silent";
    EXPECT_EQ(views().titleLabel->text(), "Title 1");
    EXPECT_EQ(times(), "0:00 -0:00");
    EXPECT_EQ(views().indexLabel->text(), "2 of 3");
    EXPECT_EQ(views().playButton->superview(), player().view().get());
    player().play();
    EXPECT_EQ(logLines().back(), "Could not play (null)");
    moveVolumeTo(0.5F);
    views().progressSlider->sendActionsForControlEvents(UIControlEventValueChanged);
    EXPECT_TRUE(UIAlertView::visibleAlerts().empty());
    tap(*views().nextButton);
    EXPECT_EQ(trackPlaying(), 2);
    EXPECT_TRUE(isPlaying());
    EXPECT_FLOAT_EQ(player().player()->volume(), 0.5F);
}

TEST_F(OvoAudioPlayerControllerTest, LabelsAndSliderFollowTheTrackAHundredTimesASecond) {
    setLength(0, 200);
    open(2);
    showOverlay();
    advance(75 - 0.5 + 0.02);
    EXPECT_EQ(times(), "1:15 -2:05");
    EXPECT_NEAR(views().progressSlider->value(), 75, 0.03);
    EXPECT_EQ(views().progressSlider->maximumValue(), 200.0F);
    EXPECT_EQ(views().indexLabel->text(), "1 of 2");
    views().progressSlider->setValue(150.5F);
    views().progressSlider->sendActionsForControlEvents(UIControlEventValueChanged);
    EXPECT_EQ(times(), "2:30 -0:50");
    EXPECT_FLOAT_EQ(static_cast<float>(player().player()->currentTime()), 150.5F);
}

TEST_F(OvoAudioPlayerControllerTest, ATickThatChangesNothingVisibleRequestsNoFrame) {
    setLength(0, 10000);
    open(1);
    showOverlay();
    advance(0.6);
    const int before = display().frames();
    advance(0.5);
    EXPECT_EQ(display().frames(), before) << "no label and no pixel of the slider has changed";
    advance(0.5);
    EXPECT_EQ(display().frames(), before + 1) << "the second has changed";
}

TEST_F(OvoAudioPlayerControllerTest, AtMostOneTimerRunsAndNoneAfterTheScreen) {
    advance(1);
    const auto before = loop().pendingWork();
    open(3);
    const auto first = player().updateTimer();
    player().toggleRepeat();
    player().toggleShuffle();
    EXPECT_FALSE(first->isValid());
    const auto latest = player().updateTimer();
    EXPECT_TRUE(latest->isValid());
    EXPECT_DOUBLE_EQ(latest->timeInterval(), 0.01);
    const std::weak_ptr<AVAudioPlayer> playing = player().player();
    EXPECT_TRUE(player().escapePressed());
    advance(1);
    EXPECT_FALSE(latest->isValid());
    EXPECT_TRUE(playing.expired());
    EXPECT_FALSE(player().player());
    EXPECT_EQ(player().view()->superview(), nullptr);
    EXPECT_FALSE(presenter().modalViewController());
    EXPECT_EQ(loop().pendingWork(), before);
}

TEST_F(OvoAudioPlayerControllerTest, ClosedWhileItSlidesInItNeverPlays) {
    advance(1);
    const auto before = loop().pendingWork();
    make(2, 0);
    presenter().presentModalViewController(
        std::static_pointer_cast<UIViewController>(player().shared_from_this()), true);
    advance(0.1);
    close();
    EXPECT_THAT(media().players(), IsEmpty());
    EXPECT_EQ(loop().pendingWork(), before);
}

TEST_F(OvoAudioPlayerControllerTest, AnInterruptionAfterTheScreenReachesNobody) {
    open(1);
    close();
    const auto opened = AVAudioPlayer::withContentsOfURL(trackURL(0), nullptr);
    media().player()->interrupt(true);
    media().player()->interrupt(false);
    EXPECT_FALSE(opened->isPlaying());
}

TEST_F(OvoAudioPlayerControllerTest, TenThousandTracksOpenWithoutReadingThem) {
    open(10000, 9999);
    player().showSongFiles();
    advance(0);
    EXPECT_LT(std::ranges::count_if(player().soundFiles(), &OvoAudioFile::isRead,
                                    [](const auto& file) -> const OvoAudioFile& { return *file; }),
              20);
    EXPECT_EQ(views().songTableView->numberOfRowsInSection(0), 10000);
    EXPECT_FALSE(player().canGoToNextTrack());
    tap(*views().previousButton);
    EXPECT_EQ(trackPlaying(), 9998);
}

}
}
