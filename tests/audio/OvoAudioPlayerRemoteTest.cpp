// Media keys and lock screens follow the same rules as the buttons.
#include "tests/audio/PlayerTest.h"

#include "platform/foundation/NSUserDefaults.h"

namespace vistrel {
namespace {

class OvoAudioPlayerRemoteTest : public PlayerTest {
protected:
    const host::NowPlaying& told() { return mediaControls().nowPlaying(); }
    host::MediaControlsClient& keys() { return *mediaControls().client(); }
    /// What the desktop shows: "0 playing, next"; the screen agrees with it.
    std::string shown() {
        EXPECT_EQ(told().state == host::NowPlaying::State::Playing, isPlaying());
        EXPECT_EQ(told().track, player().selectedIndex());
        const char* const states[] = {"stopped", "paused", "playing"};
        return std::to_string(told().track) + " " + states[static_cast<int>(told().state)] +
               (told().canGoPrevious ? ", previous" : "") + (told().canGoNext ? ", next" : "");
    }
    void expectShown(const std::vector<Step>& steps) {
        expectSteps(steps, [this] { return shown(); });
    }
};

TEST_F(OvoAudioPlayerRemoteTest, TheDesktopIsToldWhatPlaysWhileTheScreenIsShown) {
    setTags(1, 200);
    make(3, 1);
    EXPECT_EQ(mediaControls().client(), nullptr);
    present();
    ASSERT_NE(mediaControls().client(), nullptr);
    EXPECT_EQ(told().title + ", " + told().artist + ", " + told().album, texts());
    EXPECT_EQ(shown(), "1 playing, previous, next");
    EXPECT_EQ(told().duration, 200);
    close();
    EXPECT_EQ(mediaControls().client(), nullptr);
}

TEST_F(OvoAudioPlayerRemoteTest, KeysDoWhatTheButtonsWould) {
    open(3);
    expectShown({{"wait 1; media play", "0 playing, next"},
                 {"media pause", "0 paused, next"},
                 {"media pause", "0 paused, next"},
                 {"media previous", "0 paused, next"},
                 {"media next", "1 playing, previous, next"},
                 {"media next", "2 playing, previous"},
                 {"media next", "2 playing, previous"},
                 {"button Cover; wait 0.5; button Repeat", "2 playing, previous, next"},
                 {"media next", "0 playing, next"}});
}

TEST_F(OvoAudioPlayerRemoteTest, SeekingUpdatesTheScreenAndIsReportedBack) {
    open(1);
    showOverlay();
    keys().mediaSeek(30.25);
    EXPECT_EQ(texts(), "0.mp3, ,  | 0:30 -0:30 | 1 of 1");
    EXPECT_DOUBLE_EQ(keys().mediaPosition(), 30.25);
    moveTo(*views().progressSlider, 10);
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(30.25, 10));
    expectShown({{"media stop", "0 stopped"}});
    EXPECT_EQ(keys().mediaPosition(), 0);
}

TEST_F(OvoAudioPlayerRemoteTest, JumpsOfALoopedTrackAndTheEndOfTheQueueAreReported) {
    open(1);
    player().toggleRepeat();
    player().toggleRepeat();
    act("wait 20; media next");
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(0));
    expectShown({{"wait 61", "0 stopped, next"}});
    EXPECT_THAT(mediaControls().jumps(), ElementsAre(0, 0));
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
    EXPECT_EQ(volumes(), "25, 25");
    EXPECT_EQ(told().volume, 0.25F);
    EXPECT_EQ(NSUserDefaults::standardUserDefaults().floatForKey(kPlayerVolumeKey), 0.25F);
}

TEST_F(OvoAudioPlayerRemoteTest, WithoutAPlayerKeysDoNothing) {
    media().at(trackURL(0).absoluteString()).failure = "gone";
    open(1);
    EXPECT_FALSE(told().canPlay);
    keys().mediaSeek(3);
    expectShown({{"media play; media pause; media stop; media next", "0 stopped"}});
    EXPECT_EQ(keys().mediaPosition(), 0);
    EXPECT_FALSE(player().player());
}

TEST_F(OvoAudioPlayerRemoteTest, ADesktopWithoutControlsChangesNothing) {
    deterministicHost().host.mediaControls = nullptr;
    open(2);
    tapButton("Next");
    EXPECT_EQ(trackPlaying(), 1);
    close();
}

}
}
