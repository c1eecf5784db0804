// Interruptions by a real sound server during a call's stream.
#include "tests/linux/media/PlaybackFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A program that runs until it is destroyed.
class Program {
public:
    explicit Program(const std::string& command)
        : process_(NativeReference<GSubprocess>::adopt(
              g_subprocess_new(GSubprocessFlags(G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                G_SUBPROCESS_FLAGS_STDERR_SILENCE),
                               nullptr, "/bin/sh", "-c", ("exec " + command).c_str(), nullptr))) {}
    ~Program() {
        g_subprocess_send_signal(process_.get(), SIGTERM);
        g_subprocess_wait(process_.get(), nullptr, nullptr);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

private:
    NativeReference<GSubprocess> process_;
};

/// A sound server with a silent device that silences music during calls.
class SoundServerTest : public PlaybackFixture {
protected:
    SoundServerTest() {
        const std::string socket = folder_.path("sound");
        setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
        server_ = std::make_unique<Program>(
            "env HOME=" + folder_.path() + " XDG_RUNTIME_DIR=" + folder_.path() +
            " pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm=yes"
            " -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
            socket + "' -L module-null-sink -L module-role-cork");
        EXPECT_TRUE(turnUntil([&] { return std::filesystem::exists(socket); }, 10));
    }
    ~SoundServerTest() override {
        server_.reset();
        unsetenv("PULSE_SERVER");
    }

    /// A stream with a role that runs until it is destroyed.
    static std::unique_ptr<Program> stream(const std::string& role) {
        return std::make_unique<Program>("gst-launch-1.0 audiotestsrc ! pulsesink "
                                         "stream-properties=props,media.role=" +
                                         role);
    }

    support::TemporaryFolder folder_;
    std::unique_ptr<Program> server_;
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
