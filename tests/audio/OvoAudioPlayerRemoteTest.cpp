// Media keys and lock screens follow the same rules as the buttons.
#include "tests/audio/PlayerTest.h"

#include "platform/foundation/NSUserDefaults.h"

namespace vistrel {
namespace {

using State = host::NowPlaying::State;

class OvoAudioPlayerRemoteTest : public PlayerTest {
protected:
    const host::NowPlaying& told() { return mediaControls().nowPlaying(); }
    host::MediaControlsClient& keys() { return *mediaControls().client(); }
};

TEST_F(OvoAudioPlayerRemoteTest, TheDesktopIsToldWhatPlaysWhileTheScreenIsShown) {
    setTags(1, 200);
    make(3, 1);
    EXPECT_EQ(mediaControls().client(), nullptr);
    present();
    ASSERT_NE(mediaControls().client(), nullptr);
    EXPECT_EQ(told().title + ", " + told().artist + ", " + told().album,
              "Title 1, Artist 1, Album 1");
    EXPECT_EQ(told().track, 1U);
    EXPECT_EQ(told().duration, 200);
    EXPECT_EQ(told().state, State::Playing);
    EXPECT_TRUE(told().canGoNext && told().canGoPrevious);
    close();
    EXPECT_EQ(mediaControls().client(), nullptr);
}

TEST_F(OvoAudioPlayerRemoteTest, KeysDoWhatTheButtonsWould) {
    open(3);
    keys().mediaPlay();
    EXPECT_EQ(told().state, State::Playing) << "it plays already";
    advance(1);
    keys().mediaPause();
    keys().mediaPause();
    EXPECT_EQ(told().state, State::Paused);
    EXPECT_EQ(views().playButton->superview(), player().view().get());
    keys().mediaPrevious();
    EXPECT_EQ(player().selectedIndex(), 0U);
    keys().mediaNext();
    keys().mediaNext();
    EXPECT_EQ(trackPlaying(), 2);
    EXPECT_FALSE(told().canGoNext);
    keys().mediaNext();
    EXPECT_EQ(player().selectedIndex(), 2U) << "the button is disabled here";
    player().toggleRepeat();
    EXPECT_TRUE(told().canGoNext);
    keys().mediaNext();
    EXPECT_EQ(trackPlaying(), 0);
    EXPECT_EQ(told().track, 0U);
}

TEST_F(OvoAudioPlayerRemoteTest, SeekingUpdatesTheScreenAndIsReportedBack) {
    open(1);
    showOverlay();
    keys().mediaSeek(30.25);
    EXPECT_EQ(times(), "0:30 -0:30");
    EXPECT_DOUBLE_EQ(keys().mediaPosition(), 30.25);
    views().progressSlider->setValue(10);
    views().progressSlider->sendActionsForControlEvents(UIControlEventValueChanged);
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(30.25, 10));
    keys().mediaStop();
    EXPECT_EQ(told().state, State::Stopped);
    EXPECT_EQ(keys().mediaPosition(), 0);
}

TEST_F(OvoAudioPlayerRemoteTest, JumpsOfALoopedTrackAndTheEndOfTheQueueAreReported) {
    open(1);
    player().toggleRepeat();
    player().toggleRepeat();
    advance(20);
    keys().mediaNext();
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(0));
    advance(61);
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(0, 0));
    EXPECT_EQ(told().state, State::Stopped);
}

TEST_F(OvoAudioPlayerRemoteTest, ModesAndVolumeGoBothWays) {
    using Loop = host::NowPlaying::Loop;
    open(2);
    for (const Loop loop : {Loop::Track, Loop::None, Loop::Queue, Loop::Track}) {
        keys().mediaSetLoop(loop);
        EXPECT_EQ(told().loop, loop);
        EXPECT_EQ(player().repeatOne(), loop == Loop::Track);
        EXPECT_EQ(player().repeatAll(), loop == Loop::Queue);
    }
    keys().mediaSetShuffle(true);
    keys().mediaSetShuffle(true);
    EXPECT_TRUE(told().shuffle && player().shuffle());
    player().toggleShuffle();
    EXPECT_FALSE(told().shuffle);
    keys().mediaSetVolume(0.25F);
    EXPECT_EQ(views().volumeSlider->value(), 0.25F);
    EXPECT_EQ(player().player()->volume(), 0.25F);
    EXPECT_EQ(told().volume, 0.25F);
    EXPECT_EQ(NSUserDefaults::standardUserDefaults().floatForKey(kPlayerVolumeKey), 0.25F);
}

TEST_F(OvoAudioPlayerRemoteTest, WithoutAPlayerKeysDoNothing) {
    media().at(trackURL(0).absoluteString()).failure = "gone";
    open(1);
    EXPECT_FALSE(told().canPlay);
    EXPECT_EQ(told().state, State::Stopped);
    keys().mediaPlay();
    keys().mediaPause();
    keys().mediaStop();
    keys().mediaSeek(3);
    keys().mediaNext();
    EXPECT_EQ(keys().mediaPosition(), 0);
    EXPECT_FALSE(player().player());
}

TEST_F(OvoAudioPlayerRemoteTest, ADesktopWithoutControlsChangesNothing) {
    deterministicHost().host.mediaControls = nullptr;
    open(2);
    tap(*views().nextButton);
    EXPECT_EQ(trackPlaying(), 1);
    close();
}

}
}
