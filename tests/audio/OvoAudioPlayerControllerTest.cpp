#include "tests/audio/PlayerTest.h"

#include "platform/foundation/NSTimer.h"
#include "platform/foundation/NSUserDefaults.h"

namespace vistrel {
namespace {

class OvoAudioPlayerControllerTest : public PlayerTest {
protected:
    NSUserDefaults& defaults() { return NSUserDefaults::standardUserDefaults(); }
    void expect(const std::vector<Step>& steps) {
        expectSteps(steps, [this] { return state(); });
    }
};

TEST_F(OvoAudioPlayerControllerTest, TheScreenIsBuiltAtOnceAndPlaysWhenItHasAppeared) {
    setTags(1, 200);
    make(3, 1);
    EXPECT_TRUE(player().isViewLoaded());
    EXPECT_EQ(texts(), "Title 1, Artist 1, Album 1");
    EXPECT_THAT(media().player()->calls(), IsEmpty());
    present();
    EXPECT_EQ(state(), "1 plays at 1 s, Pause");
    EXPECT_EQ(player().player()->numberOfLoops(), 0);
}

TEST_F(OvoAudioPlayerControllerTest, ReadersAreToldOfEachTrackThatBegins) {
    setTags(0, 60);
    setTags(1, 60);
    open(3);
    act("button Pause; button Play; wait 121");
    EXPECT_THAT(display().announcements,
                ElementsAre("Title 0, Artist 0", "Title 1, Artist 1", "2.mp3"));
}

TEST_F(OvoAudioPlayerControllerTest, ButtonsAndSpacePlayPauseAndStayWithinTheQueue) {
    open(3, 1);
    expect({{"wait 10; button Pause", "1 rests at 10 s, Play"},
            {"wait 5; button Play; wait 1", "1 plays at 11 s, Pause"},
            {"key Space", "1 rests at 11 s, Play"},
            {"button Next", "2 plays at 0 s, Pause"},
            {"wait 2; button Next", "2 plays at 2 s, Pause"},
            {"button Previous; button Previous", "0 plays at 0 s, Pause"},
            {"wait 2; button Previous", "0 plays at 2 s, Pause"}});
    player().toggleRepeat();
    player().previous();
    EXPECT_EQ(state(), "0 plays at 2 s, Pause") << "in every mode";
}

TEST_F(OvoAudioPlayerControllerTest, TheEndOfATrackFollowsTheModesButNeverWraps) {
    const std::tuple<const char*, std::uint32_t, int, const char*> rows[] = {
        {"off, first", 0, 0, "1 plays at 1 s, Pause"},
        {"off, last", 2, 0, "2 rests at 0 s, Play"},
        {"all, last", 2, 1, "2 rests at 0 s, Play"},
        {"one, first", 0, 2, "0 plays at 1 s, Pause"},
        {"one, last", 2, 2, "2 rests at 0 s, Play"},
    };
    for (const auto& [name, index, repeatTaps, then] : rows) {
        open(3, index);
        for (int i = 0; i < repeatTaps; ++i)
            player().toggleRepeat();
        advance(61);
        EXPECT_EQ(state(), then) << name;
        close();
    }
}

TEST_F(OvoAudioPlayerControllerTest, ShuffleReachesEveryTrackAndLeavesOnePlayer) {
    open(3);
    player().toggleShuffle();
    std::set<int> seen;
    for (int i = 0; i < 200; ++i) {
        tapButton("Next");
        seen.insert(trackPlaying());
    }
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
    EXPECT_EQ(media().players().size(), 1U);
    EXPECT_LT(loop().pendingWork(), 10U);
}

TEST_F(OvoAudioPlayerControllerTest, TheVolumeIsStoredButTheFirstTrackDoesNotUseIt) {
    open(3);
    EXPECT_EQ(volumes(), "100, 100") << "the player's own";
    moveTo(*views().volumeSlider, 0.3F);
    EXPECT_EQ(volumes(), "30, 30");
    close();

    open(3);
    EXPECT_EQ(volumes(), "30, 100");
    player().play();
    EXPECT_EQ(volumes(), "30, 100") << "a refresh keeps it";
    views().volumeSlider->setValue(0.25F);
    tapButton("Next");
    EXPECT_EQ(volumes(), "30, 25") << "the slider gave its value, then showed the stored one";
    EXPECT_THAT(media().player()->calls(), ElementsAre("prepare", "play"));
    moveTo(*views().volumeSlider, 0);
    close();

    open(3);
    EXPECT_EQ(volumes(), "100, 100") << "a stored volume of 0 is ignored";
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
    EXPECT_TRUE(defaults().objectForKey("Interruption").isNull());
    expect({{"wait 1", "0 plays at 13 s, Pause"}});
    interruptionListenerCallback(&player(), 2);
    EXPECT_FALSE(player().interrupted());
}

TEST_F(OvoAudioPlayerControllerTest, OnlyAnInterruptedLastTrackPlaysAgain) {
    open(2);
    media().player()->interrupt(true);
    ASSERT_TRUE(player().interrupted());
    tapButton("Next");
    EXPECT_FALSE(player().interrupted()) << "an interruption ends with its player";
    player().setInterrupted(true);
    media().player()->end();
    expect({{"wait 1", "1 plays at 1 s, Pause"}});
    player().setInterrupted(false);
    expect({{"wait 61", "1 rests at 0 s, Play"}});
}

TEST_F(OvoAudioPlayerControllerTest, ADecodeErrorIsShownAndTheQueueContinues) {
    open(2);
    media().player()->fail("bits are missing");
    EXPECT_EQ(alertCount(), 1);
    EXPECT_EQ(alert(), "Decode Error | Unable to decode audio file with error: bits are missing");
    EXPECT_THAT(logLines(), testing::IsSupersetOf({HasSubstr("ERROR IN DECODE: "),
                                                   HasSubstr("Playback finished unsuccessfully")}));
    EXPECT_TRUE(tapAlertButton("OK"));
    EXPECT_EQ(state(), "1 plays at 3 s, Pause");
    media().player()->fail("bits are missing");
    EXPECT_EQ(state(), "1 rests at 3 s, Play") << "the last track";
    EXPECT_NE(mediaControls().nowPlaying().state, host::NowPlaying::State::Playing);
}

TEST_F(OvoAudioPlayerControllerTest,
       AFileThatCannotBeOpenedSilencesTheQueueUnlessMannersAreCareful) {
    for (const bool careful : {false, true}) {
        setManners(careful);
        for (const int broken : {0, 1}) {
            media().at(trackURL(broken).absoluteString()).failure = "gone";
            open(3, 0);
            EXPECT_EQ(views().titleLabel->text(), "0.mp3");
            while (player().selectedIndex() < 2)
                tapButton("Next");
            EXPECT_EQ(volumes(), careful ? "100, 100" : "0, 0") << broken;
            close();
        }
    }
}

TEST_F(OvoAudioPlayerControllerTest, AFileThatVanishedLeavesTheScreenWithoutAPlayer) {
    setTags(1, 100);
    media().at(trackURL(1).absoluteString()).failure = "No such file or directory";
    open(3);
    showOverlay();
    tapButton("Next");
    EXPECT_THAT(logLines().back(), HasSubstr("No such file or directory"));
    EXPECT_EQ(state(), "silence, Play");
    EXPECT_EQ(texts(), "Title 1, Artist 1, Album 1 | 0:00 -0:00 | 2 of 3");
    tapButton("Play");
    EXPECT_EQ(logLines().back(), "Could not play (null)");
    moveTo(*views().volumeSlider, 0.5F);
    moveTo(*views().progressSlider, 0);
    EXPECT_EQ(alertCount(), 0);
    tapButton("Next");
    EXPECT_EQ(state(), "2 plays at 0 s, Pause");
    EXPECT_EQ(volumes(), "50, 50");
}

TEST_F(OvoAudioPlayerControllerTest, LabelsAndSliderFollowTheTrackAHundredTimesASecond) {
    setLength(0, 200);
    open(2);
    showOverlay();
    advance(75 - 0.5 + 0.02);
    EXPECT_EQ(texts(), "0.mp3, ,  | 1:15 -2:05 | 1 of 2");
    EXPECT_NEAR(views().progressSlider->value(), 75, 0.03);
    EXPECT_EQ(views().progressSlider->maximumValue(), 200.0F);
    moveTo(*views().progressSlider, 150.5F);
    EXPECT_EQ(texts(), "0.mp3, ,  | 2:30 -0:50 | 1 of 2");
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
    tapButton("Previous");
    EXPECT_EQ(trackPlaying(), 9998);
}

}
}
