// Music through the real player, on a machine with or without sound.
#include "tests/linux/media/PlaybackFixture.h"

namespace vistrel {
namespace {

using AudioPlaybackTest = PlaybackFixture;

TEST_F(AudioPlaybackTest, TheLengthIsKnownAtOnceOrTheFileRefusedWithAReason) {
    EXPECT_NEAR(audio("steady.mp3")->duration(), 6, 0.1);
    for (const auto& [name, code] : {std::pair("text.mp3", EINVAL), {"missing.mp3", ENOENT}}) {
        const auto made = media_->createAudioPlayback(std::string("file:///") + name);
        ASSERT_FALSE(made.ok()) << name;
        EXPECT_EQ(made.failure().code, code) << name;
        EXPECT_FALSE(made.failure().message.empty());
    }
}

NativeReference<GstElement> pipelineOf(host::Playback& playback) {
    return NativeReference<GstElement>::adopt(
        gst_play_get_pipeline(dynamic_cast<GstPlayback&>(playback).native()));
}

/// The pipeline's volume; negative when it has no element for it.
double pipelineVolume(host::Playback& playback) {
    GstElement* filter = nullptr;
    g_object_get(pipelineOf(playback).get(), "audio-filter", &filter, nullptr);
    double volume = -1;
    if (filter)
        g_object_get(filter, "volume", &volume, nullptr);
    g_clear_object(&filter);
    return volume;
}

TEST_F(AudioPlaybackTest, AVolumeSetBeforeOrWhilePlayingReachesTheSound) {
    auto playback = audio("steady.mp3");
    ASSERT_TRUE(playback);
    playback->setVolume(0.25F);
    ASSERT_TRUE(starts(*playback));
    EXPECT_DOUBLE_EQ(pipelineVolume(*playback), 0.25);
    playback->setVolume(0.75F);
    EXPECT_DOUBLE_EQ(pipelineVolume(*playback), 0.75);
    EXPECT_FLOAT_EQ(playback->volume(), 0.75F);
}

TEST_F(AudioPlaybackTest, SeekingLandsWithinFiftyMilliseconds) {
    auto playback = audio("steady.mp3");
    ASSERT_TRUE(becomesReady(*playback));
    for (const double second : {4.0, 1.234, 5.2}) {
        playback->setCurrentTime(second);
        turnFor(0.3);
        EXPECT_NEAR(playback->currentTime(), second, 0.05);
    }
    // The remaining time shows where it really is.
    const auto start = Clock::now();
    ASSERT_TRUE(playsToItsEnd(*playback));
    EXPECT_NEAR(secondsSince(start), 0.8, 0.2);
}

TEST_F(AudioPlaybackTest, ItStartsAtThePositionThatWasSetAndFromTheBeginningAfterItsEnd) {
    auto playback = audio("steady.mp3");
    playback->setCurrentTime(5);
    EXPECT_DOUBLE_EQ(playback->currentTime(), 5);
    const auto start = Clock::now();
    ASSERT_TRUE(playsToItsEnd(*playback));
    EXPECT_NEAR(secondsSince(start), 1, 0.4);
    EXPECT_FALSE(playback->isPlaying());
    playback->setCurrentTime(0);
    EXPECT_TRUE(playback->play());
    turnFor(0.6);
    EXPECT_TRUE(playback->isPlaying());
    EXPECT_GT(playback->currentTime(), 0.2);
    EXPECT_LT(playback->currentTime(), 1);
}

TEST_F(AudioPlaybackTest, ARequestIsIgnoredDuringAPauseAndMayOutliveThePlayer) {
    auto playback = audio("steady.mp3");
    const auto request = [&](GstState state) {
        const auto pipeline = pipelineOf(*playback);
        gst_element_post_message(pipeline.get(),
                                 gst_message_new_request_state(GST_OBJECT(pipeline.get()), state));
    };
    ASSERT_TRUE(starts(*playback));
    playback->pause();
    request(GST_STATE_PAUSED);
    turnFor(0.3);
    request(GST_STATE_PLAYING);
    turnFor(0.3);
    const double held = playback->currentTime();
    turnFor(0.3);
    EXPECT_DOUBLE_EQ(playback->currentTime(), held);
    EXPECT_THAT(client_.told, ElementsAre("ready"));
    ASSERT_TRUE(starts(*playback));
    request(GST_STATE_PAUSED);
    playback.reset();
    turnFor(0.1);
    EXPECT_THAT(client_.told, ElementsAre("ready"));
}

TEST_F(AudioPlaybackTest, AFileCutShortStillPlaysToItsEnd) {
    auto playback = audio("cut.mp3");
    ASSERT_TRUE(playback);
    EXPECT_TRUE(playsToItsEnd(*playback));
    EXPECT_THAT(client_.told, ElementsAre("ready", "ended"));
}

TEST_F(AudioPlaybackTest, ManyTrackChangesLeaveNeitherThreadsNorMemory) {
    const auto change = [this](int times) {
        for (int i = 0; i < times; ++i) {
            auto playback = audio("untagged.mp3");
            playback->prepare();
            playback->play();
            if (i % 5 == 0)
                turnUntil([&] { return playback->currentTime() > 0; });
        }
        turnFor(0.2);
    };
    change(100);
    const double memoryBefore = residentMegabytes();
    const auto threadsBefore = runningThreads();
    change(200);
    // The streaming library keeps a few idle ones; one per change would be two hundred.
    EXPECT_LE(runningThreads(), threadsBefore + 8);
    // A leaked player would be about 200 kB.
    EXPECT_LT(residentMegabytes() - memoryBefore, 8);
}

TEST_F(AudioPlaybackTest, AMissingSoundDeviceIsLoggedOnce) {
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(starts(*audio("steady.mp3")));
    if (media_->audioRoute().ok())
        EXPECT_THAT(log_, IsEmpty());
    else
        EXPECT_THAT(log_, ElementsAre(HasSubstr("No sound device")));
}

}
}
