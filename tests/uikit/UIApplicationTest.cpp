#include "platform/uikit/UIApplication.h"

#include "platform/foundation/NSNotificationCenter.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplicationDelegate.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIStatusBar.h"
#include "tests/support/Heard.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

class UIApplicationTest : public support::ScreenTest {
protected:
    UIStatusBar& statusBar() { return *findBelow<UIStatusBar>(screen()); }
    static std::shared_ptr<UIWindow> shown(double level) {
        auto made = std::make_shared<UIWindow>();
        made->setWindowLevel(level);
        made->makeKeyAndVisible();
        return made;
    }
};

TEST_F(UIApplicationTest, WindowsAreOrderedByLevelThenByShowing) {
    const auto first = window().shared_from_this();
    const auto alert = shown(UIWindowLevelAlert);
    const auto second = shown(UIWindowLevelNormal);
    const auto bar = statusBar().shared_from_this();
    EXPECT_THAT(screen().subviews(), ElementsAre(first, second, bar, alert));
    window().makeKeyAndVisible();
    EXPECT_THAT(screen().subviews(), ElementsAre(second, first, bar, alert));
    window().setWindowLevel(UIWindowLevelAlert + 1);
    EXPECT_THAT(screen().subviews(), ElementsAre(second, bar, alert, first));
}

TEST_F(UIApplicationTest, TheKeyWindowGoesBackWhenAnAlertLeaves) {
    EXPECT_EQ(application().keyWindow(), &window());
    const auto alert = shown(UIWindowLevelAlert);
    EXPECT_EQ(application().keyWindow(), alert.get());
    EXPECT_EQ(application().frontWindow(), alert.get());
    alert->removeFromSuperview();
    EXPECT_EQ(application().keyWindow(), &window());
    const auto panel = shown(UIWindowLevelAlert);
    panel->setUserInteractionEnabled(false);
    EXPECT_EQ(application().frontWindow(), &window()) << "a panel that lets touches through";
    window().setHidden(true);
    panel->setHidden(true);
    EXPECT_EQ(application().keyWindow(), nullptr);
}

TEST_F(UIApplicationTest, TheStatusBarIsAtTheUpperEdge) {
    const std::tuple<UIInterfaceOrientation, CGRect, CGRect> cases[] = {
        {UIInterfaceOrientation::LandscapeRight, CGRectMake(300, 0, 20, 480),
         CGRectMake(0, 0, 300, 480)},
        {UIInterfaceOrientation::LandscapeLeft, CGRectMake(0, 0, 20, 480),
         CGRectMake(20, 0, 300, 480)},
        {UIInterfaceOrientation::Portrait, CGRectMake(0, 0, 320, 20), CGRectMake(0, 20, 320, 460)},
    };
    for (const auto& [orientation, bar, area] : cases) {
        application().setStatusBarOrientation(orientation, false);
        EXPECT_EQ(application().statusBarFrame(), bar);
        EXPECT_EQ(UIScreen::mainScreen().applicationFrame(), area);
        application().setStatusBarHidden(true);
        EXPECT_EQ(UIScreen::mainScreen().applicationFrame(), CGRectMake(0, 0, 320, 480));
        application().setStatusBarHidden(false);
    }
}

TEST_F(UIApplicationTest, TheClockDrawsOnlyWhenTheMinuteChanges) {
    framesComposedIn(0.2);
    std::set<std::string> texts{statusBar().clockText()};
    EXPECT_EQ(texts.begin()->size(), 5U);
    int frames = 0;
    for (int minute = 0; minute < 3; ++minute) {
        frames += framesComposedIn(60);
        texts.insert(statusBar().clockText());
    }
    EXPECT_EQ(texts.size(), 4U);
    EXPECT_EQ(frames, 3);
}

TEST_F(UIApplicationTest, NetworkActivityTurnsOnlyWhileVisible) {
    framesComposedIn(0.2);
    application().setNetworkActivityIndicatorVisible(true);
    EXPECT_EQ(statusBar().accessibilityElement().value, "network activity");
    EXPECT_NEAR(framesComposedIn(1), 12, 2);
    application().setStatusBarHidden(true);
    framesComposedIn(0.1);
    EXPECT_EQ(framesComposedIn(1), 0);
    application().setStatusBarHidden(false);
    EXPECT_GT(framesComposedIn(1), 8);
    application().setNetworkActivityIndicatorVisible(false);
    framesComposedIn(0.2);
    EXPECT_EQ(framesComposedIn(1), 0);
}

TEST_F(UIApplicationTest, StateChangesAreAnnouncedInThePhonesOrder) {
    support::Heard heard;
    const std::pair<const char*, const char*> names[] = {
        {UIApplicationDidBecomeActiveNotification, "active"},
        {UIApplicationWillResignActiveNotification, "resigns"},
        {UIApplicationDidEnterBackgroundNotification, "background"},
        {UIApplicationWillEnterForegroundNotification, "returns"}};
    for (const auto& [notification, name] : names)
        NSNotificationCenter::defaultCenter().addObserver(
            this, notification, nullptr, [&heard, name = name](const auto&) { heard(name); });
    using enum UIApplicationState;
    for (const auto state : {Active, Active, Background, Active})
        application().setState(state);
    EXPECT_EQ(heard.take(), "active, resigns, background, returns, active");
    NSNotificationCenter::defaultCenter().removeObserver(this);
}

TEST_F(UIApplicationTest, TheDelegateHearsLaunchMemoryWarningAndEnd) {
    struct Delegate : UIApplicationDelegate {
        explicit Delegate(support::Heard& said)
            : heard(said) {}
        void applicationDidFinishLaunching(UIApplication& application) override {
            application.setDelegate(nullptr);
            heard("launched and still here");
        }
        void applicationDidReceiveMemoryWarning(UIApplication&) override { heard("memory"); }
        void applicationWillTerminate(UIApplication&) override { heard("end"); }
        support::Heard& heard;
    };
    support::Heard heard;
    application().setDelegate(std::make_shared<Delegate>(heard));
    application().finishLaunching();
    application().setDelegate(std::make_shared<Delegate>(heard));
    application().receiveMemoryWarning();
    application().terminate();
    EXPECT_EQ(heard.take(), "launched and still here, memory, end");
}

TEST_F(UIApplicationTest, TheScreenTakesTheDisplaysScale) {
    UIApplication::resetSharedApplication();
    display().setScale(2);
    UIApplication::sharedApplication();
    EXPECT_EQ(UIScreen::mainScreen().scale(), 2);
    UIImage::setScreenScale(1);
}

}
}
