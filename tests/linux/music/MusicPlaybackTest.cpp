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

    void makeTone(const std::string& name, int seconds) const {
        const std::string command =
            "ffmpeg -nostdin -loglevel error -f lavfi -i sine=330:d=" + std::to_string(seconds) +
            " -c:a libmp3lame " + folder_.path(name);
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
    OvoAudioPlayerController& open(const std::vector<std::string>& names) {
        OvoAudioPlayerController::SoundFiles files;
        for (const auto& name : names)
            files.push_back(OvoAudioFile::withPath(NSURL::fileURLWithPath("/" + name)));
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
    makeTone("a.mp3", 2);
    makeTone("b.mp3", 2);
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
    std::vector<std::string> names;
    makeTone("0.mp3", 3);
    for (int i = 0; i < 30; ++i) {
        names.push_back(std::to_string(i) + ".mp3");
        if (i > 0)
            std::filesystem::copy(folder_.path("0.mp3"), folder_.path(names.back()));
    }
    auto& player = open(names);
    for (int i = 0; i < 29; ++i)
        player.next();
    EXPECT_TRUE(turnUntil([&] { return plays(29); }));
}

TEST_F(MusicPlaybackTest, AFileReplacedWhileItPlaysAndOneThatVanishesDoNoHarm) {
    makeTone("a.mp3", 2);
    makeTone("b.mp3", 2);
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
    makeTone("a.mp3", 5);
    auto& player = open({"a.mp3"});
    player.dismissAudioPlayer();
    ASSERT_TRUE(turnUntil([&] { return !player.player(); }, 5));
    EXPECT_FALSE(player.updateTimer());
}

}
}
