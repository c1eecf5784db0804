// Interruptions by a real sound server during a call's stream.
#include "tests/linux/media/PlaybackFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A program that runs until it is destroyed.
class Program {
public:
    explicit Program(const std::string& command) {
        char shell[] = "/bin/sh";
        char option[] = "-c";
        std::string text = "exec " + command + " >/dev/null 2>&1";
        char* arguments[] = {shell, option, text.data(), nullptr};
        g_spawn_async(nullptr, arguments, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr,
                      &process_, nullptr);
    }
    ~Program() {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

private:
    GPid process_ = 0;
};

/// A sound server with a silent device that silences music during calls.
class SoundServerTest : public PlaybackFixture {
protected:
    SoundServerTest() {
        char pattern[] = "/tmp/vistrel-sound-XXXXXX";
        folder_ = mkdtemp(pattern);
        const std::string socket = folder_ + "/sound";
        setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
        server_ = std::make_unique<Program>(
            "env HOME=" + folder_ + " XDG_RUNTIME_DIR=" + folder_ +
            " pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm=yes"
            " -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
            socket + "' -L module-null-sink -L module-role-cork");
        EXPECT_TRUE(turnUntil([&] { return std::filesystem::exists(socket); }, 10));
    }
    ~SoundServerTest() override {
        server_.reset();
        unsetenv("PULSE_SERVER");
        std::filesystem::remove_all(folder_);
    }

    /// A stream with a role that runs until it is destroyed.
    static std::unique_ptr<Program> stream(const std::string& role) {
        return std::make_unique<Program>("gst-launch-1.0 audiotestsrc ! pulsesink "
                                         "stream-properties=props,media.role=" +
                                         role);
    }

    std::string folder_;
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
