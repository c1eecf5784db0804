#include "web/OvoMoviePlayerViewController.h"

#include "platform/foundation/NSUserDefaults.h"
#include "platform/media/MPMoviePlayerController.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/MoviePositions.h"

namespace vistrel {
namespace {

constexpr const char* kAddress = "http://site.example/film.mp4";

class MoviePlayerTest : public support::ScreenTest {
protected:
    ~MoviePlayerTest() override {
        MPMoviePlayerController::setOfferedInterface(
            MPMoviePlayerController::Interface::LoadStates);
    }
    std::shared_ptr<OvoMoviePlayerViewController> present(const std::string& address = kAddress) {
        auto screen = OvoMoviePlayerViewController::withURL(*NSURL::URLWithString(address));
        top()->presentModalViewController(screen, true);
        screen->readyPlayer();
        return screen;
    }
    void expectPortraitWithStatusBar() {
        EXPECT_FALSE(application().isStatusBarHidden());
        EXPECT_EQ(application().statusBarOrientation(), UIInterfaceOrientation::Portrait);
        EXPECT_FALSE(top()->modalViewController() || presented());
    }
    support::SilentPlayback& player() { return *media().player(); }
};

TEST_F(MoviePlayerTest, TheFirstKnownLoadStateStartsThePlayerInLandscape) {
    media().at(kAddress).readyByItself = false;
    const auto screen = present();
    settle();
    EXPECT_FALSE(player().isPlaying());
    EXPECT_EQ(screen->view()->bounds(), CGRectMake(0, 0, 480, 320));
    EXPECT_EQ(screen->view()->center(), (CGPoint{160, 240}));
    EXPECT_NEAR(screen->view()->transform().b, 1, 1e-6) << "a quarter turn";
    EXPECT_EQ(application().statusBarOrientation(), UIInterfaceOrientation::LandscapeRight);

    player().becomeReady();
    turn();
    EXPECT_TRUE(player().isPlaying());

    screen->mp()->pause();
    player().stall(true);
    player().stall(false);
    turn();
    EXPECT_FALSE(player().isPlaying()) << "later load states are not observed";
}

TEST_F(MoviePlayerTest, TheOlderInterfaceStartsWhenTheContentIsPreloaded) {
    MPMoviePlayerController::setOfferedInterface(MPMoviePlayerController::Interface::Preload);
    media().at(kAddress).readyByItself = false;
    const auto screen = present();
    settle();
    EXPECT_TRUE(screen->view()->transform().isIdentity());
    EXPECT_FALSE(player().isPlaying());
    player().becomeReady();
    turn();
    EXPECT_TRUE(player().isPlaying());
    player().end();
    settle();
    expectPortraitWithStatusBar();
}

TEST_F(MoviePlayerTest, EveryEndComesBackToPortraitAndOnlyAnErrorIsSaid) {
    enum class End { ByItself, Error, ErrorWhileItSlidesIn, Done, DismissedByOthers };
    for (const End end : {End::ByItself, End::Error, End::ErrorWhileItSlidesIn, End::Done,
                          End::DismissedByOthers}) {
        media().at(kAddress).failure = end == End::ErrorWhileItSlidesIn ? "not a video" : "";
        const std::weak_ptr<OvoMoviePlayerViewController> watch = present();
        settle();
        if (end == End::ByItself)
            player().end();
        else if (end == End::Error)
            player().fail("no decoder");
        else if (end == End::Done)
            tapButton("Done");
        else if (end == End::DismissedByOthers)
            navigation().dismissModalViewControllerAnimated(false);
        advance(3);
        expectPortraitWithStatusBar();
        EXPECT_TRUE(watch.expired());
        EXPECT_EQ(media().player(), nullptr);
        if (end == End::Error || end == End::ErrorWhileItSlidesIn) {
            EXPECT_EQ(alert(), "Failed to Play | Unable to play video. Please try downloading it "
                               "instead");
            EXPECT_TRUE(tapAlertButton("OK"));
        }
        EXPECT_EQ(alertCount(), 0);
    }
}

TEST_F(MoviePlayerTest, CarefulMannersPlayAFileOnWhereItWasLeft) {
    const std::string film = "file:///var/mobile/Library/Downloads/film.mp4";
    const struct {
        const char* why;
        bool careful;
        std::string address;
        double left; ///< of sixty seconds
        double next;
    } cases[] = {
        {"the phone's way", false, film, 30, 0},     {"in its midst", true, film, 30, 30},
        {"almost over", true, film, 58, 0},          {"hardly begun", true, film, 5, 0},
        {"over the network", true, kAddress, 30, 0},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.why);
        setManners(each.careful);
        const auto first = present(each.address);
        settle();
        ASSERT_TRUE(player().isPlaying());
        first->mp()->setCurrentPlaybackTime(each.left);
        tapButton("Done");
        settle();
        // As a new start of the application would find it.
        NSUserDefaults::standardUserDefaults().synchronize();
        NSUserDefaults::resetStandardUserDefaults();
        const auto screen = present(each.address);
        turn();
        EXPECT_NEAR(screen->mp()->currentPlaybackTime(), each.next, 0.5);
        player().end();
        advance(3);
    }
    const auto interrupted = present(film);
    settle();
    interrupted->mp()->setCurrentPlaybackTime(40);
    UIApplication::sharedApplication().terminate();
    NSUserDefaults::resetStandardUserDefaults();
    EXPECT_NEAR(MoviePositions::positionOf(*NSURL::URLWithString(film)), 40, 0.5);
    // The oldest are forgotten.
    for (int i = 0; i <= 50; ++i)
        MoviePositions::leave(*NSURL::URLWithString(film + std::to_string(i)), 30, 60);
    EXPECT_EQ(MoviePositions::positionOf(*NSURL::URLWithString(film + "0")), 0);
    EXPECT_EQ(MoviePositions::positionOf(*NSURL::URLWithString(film + "1")), 30);
}

}
}
