#include "audio/OvoAudioPlayerController.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/linux/main/LinuxHost.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/media/AudioSession.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIWindow.h"
#include "tests/linux/MainLoop.h"
#include "tests/support/ManualDisplay.h"
#include "tests/support/TemporaryFolder.h"

namespace vistrel {
namespace {

/// The music player on the real host, without a display.
class MusicPlaybackTest : public testing::Test {
protected:
    static void SetUpTestSuite() { setenv("VISTREL_MODULES", MODULES_FOLDER, 1); }
    MusicPlaybackTest() { host_.setDisplay(&display_); }
    ~MusicPlaybackTest() override {
        player_->dismissModalViewControllerAnimated(false);
        player_ = nullptr;
        turnFor(0.05);
        UIApplication::resetSharedApplication();
        AudioSessionReset();
        NSUserDefaults::resetStandardUserDefaults();
    }

    /// Opens files of three seconds each, but for one that is missing.
    OvoAudioPlayerController& open(const std::vector<std::string>& names) {
        OvoAudioPlayerController::SoundFiles files;
        for (const auto& name : names) {
            files.push_back(OvoAudioFile::withPath(NSURL::fileURLWithPath("/" + name)));
            if (name != "gone.mp3")
                std::filesystem::copy(SAMPLES_FOLDER "/untagged.mp3", folder_.path(name));
        }
        window_ = std::make_shared<UIWindow>();
        presenter_ = std::make_shared<UIViewController>();
        window_->addSubview(presenter_->view());
        window_->makeKeyAndVisible();
        player_ = OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(files, "/", 0);
        presenter_->presentModalViewController(player_, false);
        return *player_;
    }
    bool plays(std::uint32_t index) const {
        return player_->selectedIndex() == index && player_->player() &&
               player_->player()->currentTime() > 0.2;
    }
    static double now() { return static_cast<double>(g_get_monotonic_time()) * 1e-6; }

    support::TemporaryFolder folder_;
    LinuxHost host_{folder_.path()};
    support::ManualDisplay display_{host_.loop()};
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<UIViewController> presenter_;
    std::shared_ptr<OvoAudioPlayerController> player_;
};

TEST_F(MusicPlaybackTest, OneTrackFollowsAnotherWithin150Milliseconds) {
    auto& player = open({"a.mp3", "b.mp3"});
    ASSERT_TRUE(turnUntil([&] { return plays(0); }));
    const double length = player.player()->duration();
    const double firstMoment = now();
    const double firstPlace = player.player()->currentTime();
    ASSERT_TRUE(turnUntil([&] { return plays(1); }));
    const double elapsed = now() - firstMoment;
    const double gap = elapsed - (length - firstPlace) - player.player()->currentTime();
    RecordProperty("gapMilliseconds", static_cast<int>(gap * 1000));
    std::printf("gap %.0f ms\n", gap * 1000);
    EXPECT_LT(gap, 0.150);
    EXPECT_GT(gap, -0.100) << "the second began before the first had ended";
    ASSERT_TRUE(turnUntil([&] { return !player.updateTimer(); })) << "the last one stops";
    EXPECT_EQ(player.selectedIndex(), 1U);
}

TEST_F(MusicPlaybackTest, NextTappedFasterThanTracksLoadPlaysTheLastOneRequested) {
    std::vector<std::string> names(30);
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = std::to_string(i) + ".mp3";
    auto& player = open(names);
    for (int i = 0; i < 29; ++i)
        player.next();
    EXPECT_TRUE(turnUntil([&] { return plays(29); }));
}

TEST_F(MusicPlaybackTest, AFileReplacedWhileItPlaysAndOneThatVanishesDoNoHarm) {
    auto& player = open({"a.mp3", "gone.mp3", "b.mp3"});
    ASSERT_TRUE(turnUntil([&] { return plays(0); }));
    std::filesystem::remove(folder_.path("a.mp3"));
    folder_.put("a.mp3", "something else");
    ASSERT_TRUE(turnUntil([&] { return player.selectedIndex() == 1; }));
    EXPECT_FALSE(player.player());
    player.next();
    EXPECT_TRUE(turnUntil([&] { return plays(2); }));
}

TEST_F(MusicPlaybackTest, ClosingWhileATrackLoadsEndsIt) {
    auto& player = open({"a.mp3"});
    player.dismissAudioPlayer();
    ASSERT_TRUE(turnUntil([&] { return !player.player(); }, 5));
    EXPECT_FALSE(player.updateTimer());
}

}
}
