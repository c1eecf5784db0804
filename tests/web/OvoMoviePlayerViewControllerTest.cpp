#include "web/OvoMoviePlayerViewController.h"

#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIApplication.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

constexpr const char* kAddress = "http://site.example/film.mp4";

class MoviePlayerTest : public support::ScreenTest {
protected:
    ~MoviePlayerTest() override {
        MPMoviePlayerController::setOfferedInterface(
            MPMoviePlayerController::Interface::LoadStates);
    }
    std::shared_ptr<OvoMoviePlayerViewController> present() {
        auto screen = OvoMoviePlayerViewController::withURL(*NSURL::URLWithString(kAddress));
        navigation().topViewController()->presentModalViewController(screen, true);
        screen->readyPlayer();
        return screen;
    }
    bool isPresented() {
        return navigation().topViewController()->modalViewController() != nullptr ||
               navigation().modalViewController() != nullptr;
    }
    void expectPortraitWithStatusBar() {
        EXPECT_FALSE(UIApplication::sharedApplication().isStatusBarHidden());
        EXPECT_EQ(UIApplication::sharedApplication().statusBarOrientation(),
                  UIInterfaceOrientation::Portrait);
        EXPECT_FALSE(isPresented());
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
    EXPECT_EQ(UIApplication::sharedApplication().statusBarOrientation(),
              UIInterfaceOrientation::LandscapeRight);

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
    enum class End { ByItself, Error, ErrorWhileItSlidesIn, Done };
    for (const End end : {End::ByItself, End::Error, End::ErrorWhileItSlidesIn, End::Done}) {
        media().at(kAddress).failure = end == End::ErrorWhileItSlidesIn ? "not a video" : "";
        const std::weak_ptr<OvoMoviePlayerViewController> watch = present();
        settle();
        if (end == End::ByItself)
            player().end();
        else if (end == End::Error)
            player().fail("no decoder");
        else if (end == End::Done)
            tapButton("Done");
        settle();
        settle();
        expectPortraitWithStatusBar();
        EXPECT_TRUE(watch.expired());
        EXPECT_EQ(media().player(), nullptr);
        if (end == End::Error || end == End::ErrorWhileItSlidesIn) {
            EXPECT_EQ(alertTitle(), "Failed to Play");
            EXPECT_EQ(alertMessage(), "Unable to play video. Please try downloading it instead");
            EXPECT_TRUE(tapAlertButton("OK"));
        }
        EXPECT_EQ(alertCount(), 0);
    }
}

}
}
