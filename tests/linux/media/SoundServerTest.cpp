// The players with a real sound server: calls interrupt music, and a film's sound belongs to its
// pictures.
#include "tests/linux/media/PlaybackFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <gst/gst.h>

#include <csignal>
#include <mutex>

namespace vistrel {
namespace {

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

/// A sound server with a silent device that silences music during calls; the players use it.
class SoundServer {
public:
    SoundServer() {
        const std::string socket = folder_.path("sound");
        setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
        EXPECT_TRUE(turnUntil([&] { return std::filesystem::exists(socket); }, 10));
    }
    ~SoundServer() { unsetenv("PULSE_SERVER"); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

private:
    support::TemporaryFolder folder_;
    Program server_{"env HOME=" + folder_.path() + " XDG_RUNTIME_DIR=" + folder_.path() +
                    " pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm=yes"
                    " -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
                    folder_.path("sound") + "' -L module-null-sink -L module-role-cork"};
};

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
        EXPECT_THAT(client_.told, ElementsAre("ready")) << "only calls interrupt";
    }
    {
        const auto call = stream("phone");
        ASSERT_TRUE(hears("interrupted", 10));
        EXPECT_FALSE(music->isPlaying());
        const double held = music->currentTime();
        turnFor(0.5);
        EXPECT_NEAR(music->currentTime(), held, 0.2);
    }
    ASSERT_TRUE(hears("interruption over", 10));
    EXPECT_THAT(client_.told, ElementsAre("ready", "interrupted", "interruption over"));
    EXPECT_FALSE(music->isPlaying()) << "whether to go on is the application's choice";
    const double held = music->currentTime();
    turnFor(0.6);
    EXPECT_NEAR(music->currentTime(), held, 0.2) << "the server may play what it still has";
    EXPECT_TRUE(starts(*music));
}

TEST_F(SoundServerTest, ACallDoesNotStartMusicThatTheUserHasPaused) {
    for (const bool during : {false, true}) {
        SCOPED_TRACE(during);
        auto music = audio("varying.mp3");
        ASSERT_TRUE(starts(*music));
        if (!during)
            music->pause();
        turnFor(0.3);
        {
            const auto call = stream("phone");
            turnFor(1.5);
            music->pause();
        }
        const double held = music->currentTime();
        turnFor(1.5);
        EXPECT_FALSE(music->isPlaying());
        EXPECT_NEAR(music->currentTime(), held, 0.1);
        EXPECT_EQ(client_.told.back(), during ? "interrupted" : "ready");
    }
}

using Moments = std::vector<gint64>; ///< monotonic microseconds

/// Listens to what the sound server plays, with as little delay as it offers.
class BeepRecorder {
public:
    BeepRecorder() {
        gst_init(nullptr, nullptr);
        pipeline_ = gst_parse_launch(
            "pulsesrc device=null.monitor latency-time=2000 buffer-time=10000 "
            "provide-clock=false ! audio/x-raw,format=S16LE,rate=16000,channels=1 ! "
            "fakesink name=ear sync=false signal-handoffs=true",
            nullptr);
        GstElement* ear = gst_bin_get_by_name(GST_BIN(pipeline_), "ear");
        g_signal_connect(ear, "handoff", G_CALLBACK(heard), this);
        gst_object_unref(ear);
        gst_element_set_state(pipeline_, GST_STATE_PLAYING);
    }
    ~BeepRecorder() {
        gst_element_set_state(pipeline_, GST_STATE_NULL);
        gst_object_unref(pipeline_);
    }
    BeepRecorder(const BeepRecorder&) = delete;
    BeepRecorder& operator=(const BeepRecorder&) = delete;

    bool isListening() {
        const std::lock_guard lock(mutex_);
        return listens_;
    }
    Moments take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(beeps_, {});
    }

private:
    static void heard(GstElement*, GstBuffer* buffer, GstPad*, gpointer data) {
        auto& self = *static_cast<BeepRecorder*>(data);
        const std::lock_guard lock(self.mutex_);
        self.listens_ = true;
        GstMapInfo map;
        if (!gst_buffer_map(buffer, &map, GST_MAP_READ))
            return;
        const gint64 now = g_get_monotonic_time();
        const auto* samples = reinterpret_cast<const gint16*>(map.data);
        const auto count = static_cast<gint64>(map.size / sizeof(gint16));
        for (gint64 i = 0; i < count; ++i) {
            if (std::abs(int{samples[i]}) < 2000)
                continue;
            const gint64 at = now - (count - i) * G_USEC_PER_SEC / 16000;
            if (at - std::exchange(self.loudAt_, at) > G_USEC_PER_SEC / 2)
                self.beeps_.push_back(at);
        }
        gst_buffer_unmap(buffer, &map);
    }

    GstElement* pipeline_ = nullptr;
    std::mutex mutex_;
    bool listens_ = false;
    gint64 loudAt_ = 0;
    Moments beeps_;
};

class LipSyncTest : public PlaybackFixture {
protected:
    /// How much later than its flash a beep is played, in milliseconds: the median of some seconds.
    double lateness(host::MoviePlayback& playback, double seconds = 4.5) {
        recorder_.take();
        Moments flashes;
        bool wasWhite = true;
        const auto start = Clock::now();
        turnUntil([&] {
            const bool isWhite = colourShown(playback)[1] > 128;
            if (isWhite && !wasWhite)
                flashes.push_back(g_get_monotonic_time());
            wasWhite = isWhite;
            return secondsSince(start) > seconds;
        });
        std::vector<double> found;
        for (const gint64 beep : recorder_.take())
            for (const gint64 flash : flashes)
                if (std::abs(beep - flash) < G_USEC_PER_SEC / 2)
                    found.push_back(static_cast<double>(beep - flash) / 1000);
        EXPECT_GE(found.size(), 3U);
        if (found.empty())
            return HUGE_VAL;
        std::sort(found.begin(), found.end());
        return found[found.size() / 2];
    }

    SoundServer server_;
    BeepRecorder recorder_;
};

TEST_F(LipSyncTest, BeepsAreHeardWithTheirFlashesAfterEverythingAViewerDoes) {
    constexpr double kNoticed = 40; ///< milliseconds
    ASSERT_TRUE(turnUntil([&] { return recorder_.isListening(); }));
    auto playback = movie("flashes.mp4");
    ASSERT_TRUE(starts(*playback));
    EXPECT_NEAR(lateness(*playback), 0, kNoticed) << "from the start";
    playback->setCurrentTime(100.3);
    EXPECT_NEAR(lateness(*playback), 0, kNoticed) << "after a seek";
    playback->pause();
    turnFor(0.7);
    playback->play();
    EXPECT_NEAR(lateness(*playback), 0, kNoticed) << "after a pause";
    playback->setCurrentTime(600);
    EXPECT_NEAR(lateness(*playback), 0, kNoticed) << "ten minutes later in the film";
}

}
}
