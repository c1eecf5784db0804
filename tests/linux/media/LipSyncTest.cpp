// Sound and picture of a film belong together: what the sound server plays against what is drawn.
#include "tests/linux/media/MovieFixture.h"
#include "tests/linux/media/SoundServer.h"

#include <gst/gst.h>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace vistrel {
namespace {

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

class LipSyncTest : public MovieFixture {
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
    auto playback = movie("file:///flashes.mp4");
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
