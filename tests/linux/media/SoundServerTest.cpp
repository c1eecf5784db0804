// Interruptions by a real sound server during a call's stream.
#include "tests/linux/media/SoundServer.h"
#include "tests/linux/media/PlaybackFixture.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SoundServerTest : public PlaybackFixture {
protected:
    /// A stream with a role that runs until it is destroyed.
    static std::unique_ptr<Program> stream(const std::string& role) {
        return std::make_unique<Program>("gst-launch-1.0 audiotestsrc ! pulsesink "
                                         "stream-properties=props,media.role=" +
                                         role);
    }

    SoundServer server_;
};

TEST_F(SoundServerTest, ACallInterruptsMusicUntilItEnds) {
    auto music = audio("varying.mp3");
    ASSERT_TRUE(starts(*music));
    {
        const auto effect = stream("event");
        turnFor(1);
        EXPECT_THAT(client_.interruptions, IsEmpty()) << "only calls interrupt";
    }
    {
        const auto call = stream("phone");
        ASSERT_TRUE(turnUntil([&] { return !client_.interruptions.empty(); }, 10));
        EXPECT_FALSE(music->isPlaying());
        const double held = music->currentTime();
        turnFor(0.5);
        EXPECT_NEAR(music->currentTime(), held, 0.2);
    }
    ASSERT_TRUE(turnUntil([&] { return client_.interruptions.size() == 2; }, 10));
    EXPECT_THAT(client_.interruptions, ElementsAre(true, false));
    EXPECT_FALSE(music->isPlaying()) << "whether to go on is the application's choice";
    const double held = music->currentTime();
    turnFor(0.6);
    EXPECT_NEAR(music->currentTime(), held, 0.2) << "the server may play what it still has";
    EXPECT_TRUE(starts(*music));
}

TEST_F(SoundServerTest, ACallDoesNotStartMusicThatTheUserHasPaused) {
    auto music = audio("varying.mp3");
    ASSERT_TRUE(starts(*music));
    music->pause();
    turnFor(0.3);
    const double held = music->currentTime();
    {
        const auto call = stream("phone");
        turnFor(1.5);
    }
    turnFor(1.5);
    EXPECT_FALSE(music->isPlaying());
    EXPECT_NEAR(music->currentTime(), held, 0.1);
}

}
}
