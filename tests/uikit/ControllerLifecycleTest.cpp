#include "platform/foundation/NSNotificationCenter.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationController.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace vistrel {
namespace {

using Log = std::vector<std::string>;

/// Writes down what it hears: "B+will~" is viewWillAppear of B, animated; "B-did" is
/// viewDidDisappear of B at once.
class RecordingController : public UIViewController {
public:
    RecordingController(std::string name, Log& log)
        : name_(name)
        , log_(log) {
        setTitle(std::move(name));
    }

    void viewDidLoad() override {
        heightAtLoad = view()->frame().size.height;
        log_.push_back(name_ + " load");
    }
    void viewDidUnload() override { log_.push_back(name_ + " unload"); }
    void viewWillAppear(bool animated) override {
        heard("+will", animated);
        if (onWillAppear)
            onWillAppear();
    }
    void viewDidAppear(bool animated) override { heard("+did", animated); }
    void viewWillDisappear(bool animated) override { heard("-will", animated); }
    void viewDidDisappear(bool animated) override { heard("-did", animated); }

    double heightAtLoad = 0;
    std::function<void()> onWillAppear;

private:
    void heard(const char* what, bool animated) {
        log_.push_back(name_ + what + (animated ? "~" : ""));
    }

    std::string name_;
    Log& log_;
};

class ControllerLifecycle : public support::ScreenTest {
protected:
    void SetUp() override {
        navigation_ = UINavigationController::withRootViewController(a_);
        window().addSubview(navigation_->view());
        log_.clear();
    }

    Log heard() { return std::exchange(log_, {}); }
    /// Long enough for every slide.
    Log heardLater() {
        advance(1);
        return heard();
    }
    std::shared_ptr<RecordingController> make(const std::string& name) {
        return std::make_shared<RecordingController>(name, log_);
    }

    Log log_;
    std::shared_ptr<RecordingController> a_ = make("A");
    std::shared_ptr<RecordingController> b_ = make("B");
    std::shared_ptr<RecordingController> c_ = make("C");
    std::shared_ptr<UINavigationController> navigation_;
};

TEST_F(ControllerLifecycle, ARootAppearsWhenItsStackComesIntoTheWindow) {
    const auto root = make("R");
    const auto stack = UINavigationController::withRootViewController(root);
    EXPECT_THAT(heard(), IsEmpty());
    window().addSubview(stack->view());
    EXPECT_THAT(heard(), ElementsAre("R load", "R+will", "R+did"));
    stack->view()->removeFromSuperview();
    EXPECT_THAT(heard(), ElementsAre("R-will", "R-did"));
}

TEST_F(ControllerLifecycle, AScreenIsResizedUnderTheBarAfterItsViewDidLoad) {
    navigation_->pushViewController(b_, false);
    EXPECT_EQ(b_->heightAtLoad, 460);
    EXPECT_EQ(b_->view()->frame(), CGRectMake(0, 0, 320, 416));
    EXPECT_EQ(b_->view()->convertRectToView(b_->view()->bounds(), nullptr),
              CGRectMake(0, 64, 320, 416));
}

TEST_F(ControllerLifecycle, PushesAndPopsSpeakInThePhonesOrder) {
    navigation_->pushViewController(b_, true);
    EXPECT_THAT(heard(), ElementsAre("B load", "A-will~", "B+will~"));
    EXPECT_THAT(heardLater(), ElementsAre("A-did~", "B+did~"));
    EXPECT_EQ(a_->view()->window(), nullptr);

    navigation_->popViewControllerAnimated(true);
    EXPECT_THAT(heard(), ElementsAre("B-will~", "A+will~"));
    EXPECT_THAT(heardLater(), ElementsAre("B-did~", "A+did~"));
    EXPECT_EQ(b_->navigationController(), nullptr);

    navigation_->pushViewController(b_, false);
    EXPECT_THAT(heard(), ElementsAre("A-will", "B+will", "A-did", "B+did"));
    navigation_->popViewControllerAnimated(false);
    EXPECT_THAT(heard(), ElementsAre("B-will", "A+will", "B-did", "A+did"));
    EXPECT_THAT(heardLater(), IsEmpty());
    EXPECT_EQ(navigation_->popViewControllerAnimated(true), nullptr);
}

TEST_F(ControllerLifecycle, APushDuringASlideEndsTheSlideFirst) {
    navigation_->pushViewController(b_, true);
    advance(0.1);
    heard();
    navigation_->pushViewController(c_, true);
    EXPECT_THAT(heard(), ElementsAre("A-did~", "B+did~", "C load", "B-will~", "C+will~"));
    EXPECT_THAT(heardLater(), ElementsAre("B-did~", "C+did~"));
    EXPECT_EQ(c_->view()->frame(), CGRectMake(0, 0, 320, 416));
    EXPECT_EQ(b_->view()->superview(), nullptr);
}

TEST_F(ControllerLifecycle, APopDuringAPushComesBackWhole) {
    navigation_->pushViewController(b_, true);
    advance(0.1);
    heard();
    EXPECT_EQ(navigation_->popViewControllerAnimated(true), b_);
    EXPECT_THAT(heard(), ElementsAre("A-did~", "B+did~", "B-will~", "A+will~"));
    EXPECT_THAT(heardLater(), ElementsAre("B-did~", "A+did~"));
    EXPECT_EQ(a_->view()->frame(), CGRectMake(0, 0, 320, 416));
    EXPECT_EQ(navigation_->topViewController(), a_);
}

TEST_F(ControllerLifecycle, ScreensInTheMiddleHearNothingOfAPopToTheRoot) {
    navigation_->pushViewController(b_, false);
    navigation_->pushViewController(c_, false);
    heard();
    navigation_->popToRootViewControllerAnimated(true);
    EXPECT_THAT(heard(), ElementsAre("C-will~", "A+will~"));
    EXPECT_THAT(heardLater(), ElementsAre("C-did~", "A+did~"));
    EXPECT_EQ(b_->navigationController(), nullptr);
}

TEST_F(ControllerLifecycle, AModalScreenCoversTheWholeStackAndUncoversIt) {
    for (const bool fromScreen : {true, false}) {
        UIViewController& presenter =
            fromScreen ? static_cast<UIViewController&>(*a_) : *navigation_;
        const auto modal = make("M");
        presenter.presentModalViewController(modal, true);
        EXPECT_THAT(heard(), ElementsAre("M load", "A-will~", "M+will~"));
        EXPECT_NE(a_->view()->window(), nullptr) << "seen until it is covered";
        EXPECT_EQ(modal->view()->frame(), CGRectMake(0, 20, 320, 460));
        EXPECT_GT(modal->view()->presentationState().center.y, 480);
        EXPECT_THAT(heardLater(), ElementsAre("M+did~", "A-did~"));
        EXPECT_EQ(a_->view()->window(), nullptr);
        EXPECT_EQ(modal->parentViewController(), navigation_.get());
        EXPECT_EQ(presenter.modalViewController(), modal);

        (fromScreen ? *modal : presenter).dismissModalViewControllerAnimated(true);
        EXPECT_THAT(heard(), ElementsAre("M-will~", "A+will~"));
        EXPECT_NE(a_->view()->window(), nullptr);
        EXPECT_THAT(heardLater(), ElementsAre("A+did~", "M-did~"));
        EXPECT_EQ(modal->view()->window(), nullptr);
        EXPECT_EQ(modal->parentViewController(), nullptr);
        EXPECT_EQ(navigation_->view()->frame(), CGRectMake(0, 20, 320, 460));
    }
}

TEST_F(ControllerLifecycle, ADismissalDuringAPresentationEndsThePresentationFirst) {
    const auto modal = make("M");
    a_->presentModalViewController(modal, true);
    advance(0.1);
    heard();
    modal->dismissModalViewControllerAnimated(true);
    EXPECT_THAT(heard(), ElementsAre("M+did~", "A-did~", "M-will~", "A+will~"));
    modal->dismissModalViewControllerAnimated(true);
    EXPECT_THAT(heardLater(), ElementsAre("A+did~", "M-did~"));
}

TEST_F(ControllerLifecycle, APresentationDuringADismissalShowsTheNewScreen) {
    const auto first = make("M");
    const auto second = make("N");
    a_->presentModalViewController(first, false);
    heard();
    a_->dismissModalViewControllerAnimated(true);
    a_->presentModalViewController(second, false);
    EXPECT_THAT(heard(), ElementsAre("M-will~", "A+will~", "A+did~", "M-did~", "N load", "A-will",
                                     "N+will", "N+did", "A-did"));
    EXPECT_EQ(a_->modalViewController(), second);
}

TEST_F(ControllerLifecycle, OneModalScreenAtATime) {
    const auto first = make("M");
    a_->presentModalViewController(first, false);
    heard();
    navigation_->presentModalViewController(b_, true);
    EXPECT_THAT(heardLater(), IsEmpty());
    EXPECT_EQ(navigation_->modalViewController(), first);
}

TEST_F(ControllerLifecycle, DismissalTakesEveryScreenAboveAlong) {
    const auto first = make("M");
    const auto second = make("N");
    a_->presentModalViewController(first, false);
    first->presentModalViewController(second, false);
    heard();
    a_->dismissModalViewControllerAnimated(true);
    EXPECT_THAT(heard(), ElementsAre("N-will", "M+will", "M+did", "N-did", "M-will~", "A+will~"));
    EXPECT_THAT(heardLater(), ElementsAre("A+did~", "M-did~"));
}

TEST_F(ControllerLifecycle, AScreenPushedWhileCoveredAppearsWhenTheStackDoes) {
    const auto modal = make("M");
    a_->presentModalViewController(modal, false);
    heard();
    navigation_->pushViewController(b_, true);
    EXPECT_THAT(heardLater(), ElementsAre("B load"));
    modal->dismissModalViewControllerAnimated(false);
    EXPECT_THAT(heard(), ElementsAre("M-will", "B+will", "B+did", "M-did"));
    EXPECT_NE(b_->view()->window(), nullptr);
}

TEST_F(ControllerLifecycle, AScreenThatTurnedItselfKeepsItsTurnThroughTheSlide) {
    const auto modal = make("M");
    a_->presentModalViewController(modal, true);
    advance(0.05);
    modal->view()->setBounds(CGRectMake(0, 0, 480, 320));
    modal->view()->setCenter({160, 240});
    modal->view()->setTransform(CGAffineTransformMakeRotation(1.5707963267948966));
    advance(1);
    EXPECT_EQ(modal->view()->bounds(), CGRectMake(0, 0, 480, 320));
    EXPECT_EQ(modal->view()->presentationState().center, (CGPoint{160, 240}));
    EXPECT_EQ(modal->view()->center(), (CGPoint{160, 240}));
}

TEST_F(ControllerLifecycle, AScreenThatClosesItselfWhileAppearingLeavesNothingBehind) {
    const auto modal = make("M");
    modal->onWillAppear = [&] {
        modal->dismissModalViewControllerAnimated(false);
    };
    a_->presentModalViewController(modal, true);
    heardLater();
    EXPECT_EQ(modal->view()->window(), nullptr);
    EXPECT_EQ(a_->modalViewController(), nullptr);
    EXPECT_NE(a_->view()->window(), nullptr);
}

TEST_F(ControllerLifecycle, AMemoryWarningTakesOnlyUnseenViews) {
    navigation_->pushViewController(b_, false);
    navigation_->pushViewController(c_, false);
    heard();
    NSNotificationCenter::defaultCenter().postNotification(
        UIApplicationDidReceiveMemoryWarningNotification);
    EXPECT_THAT(heard(), testing::UnorderedElementsAre("A unload", "B unload"));
    navigation_->popViewControllerAnimated(false);
    EXPECT_THAT(heard(), ElementsAre("B load", "C-will", "B+will", "C-did", "B+did"));
    EXPECT_EQ(b_->view()->frame(), CGRectMake(0, 0, 320, 416));
}

TEST_F(ControllerLifecycle, AMemoryWarningUnderAModalScreenIsMadeGoodAtDismissal) {
    const auto modal = make("M");
    a_->presentModalViewController(modal, false);
    heard();
    NSNotificationCenter::defaultCenter().postNotification(
        UIApplicationDidReceiveMemoryWarningNotification);
    EXPECT_THAT(heard(), ElementsAre("A unload"));
    modal->dismissModalViewControllerAnimated(false);
    EXPECT_THAT(heard(), ElementsAre("M-will", "A load", "A+will", "A+did", "M-did"));
    EXPECT_NE(a_->view()->window(), nullptr);
}

TEST_F(ControllerLifecycle, EscapeGoesBackAndClosesModalScreens) {
    navigation_->pushViewController(b_, false);
    const auto modal = make("M");
    b_->presentModalViewController(modal, false);
    press(UIKeyCode::Escape);
    advance(1);
    EXPECT_EQ(b_->modalViewController(), nullptr);
    press(UIKeyCode::Escape);
    advance(1);
    EXPECT_EQ(navigation_->topViewController(), a_);
    EXPECT_FALSE(press(UIKeyCode::Escape));
}

TEST_F(ControllerLifecycle, ADoubleClickOrTwoQuickEntersOpenOneScreen) {
    const auto push = [&] {
        navigation_->pushViewController(make("P"), true);
    };
    const auto present = [&] {
        navigation_->presentModalViewController(make("P"), true);
    };
    const auto click = [&] {
        tap(CGPoint{20, 200});
    };
    const auto enter = [&] {
        press(UIKeyCode::Enter);
    };
    struct Case {
        const char* name;
        std::function<void()> open;
        std::function<void()> activate;
    };
    const Case cases[] = {{"push, click", push, click},
                          {"present, click", present, click},
                          {"push, Enter", push, enter},
                          {"present, Enter", present, enter}};
    for (const Case& test : cases) {
        int opened = 0;
        const auto button = std::make_shared<UIButton>(CGRectMake(0, 0, 320, 400));
        button->addTarget(
            [&] {
                ++opened;
                test.open();
            },
            UIControlEventTouchUpInside);
        a_->view()->addSubview(button);
        auto& events = UIApplication::sharedApplication().events();
        events.setFirstResponder(button);
        test.activate();
        advance(0.1);
        test.activate();
        press(UIKeyCode::Escape);
        EXPECT_EQ(opened, 1) << test.name;
        advance(1);
        navigation_->dismissModalViewControllerAnimated(true);
        navigation_->popToRootViewControllerAnimated(true);
        advance(1);
        events.setFirstResponder(button);
        test.activate();
        EXPECT_EQ(opened, 2) << test.name << ": the screen takes touches and keys again";
        navigation_->dismissModalViewControllerAnimated(false);
        navigation_->popToRootViewControllerAnimated(false);
        button->removeFromSuperview();
    }
    navigation_->pushViewController(b_, false);
    navigation_->pushViewController(c_, false);
    tapButton("B");
    advance(0.1);
    tap(CGPoint{20, 42});
    advance(1);
    EXPECT_EQ(navigation_->topViewController(), b_) << "one back button, one step back";
}

TEST_F(ControllerLifecycle, AScreenThatSlidesOutHasLeftItsStack) {
    navigation_->pushViewController(b_, false);
    navigation_->popViewControllerAnimated(true);
    advance(0.1);
    EXPECT_EQ(b_->navigationController(), nullptr);
    navigation_->pushViewController(b_, true);
    EXPECT_EQ(b_->navigationController(), navigation_.get()) << "it may come back at once";
    heardLater();
    EXPECT_EQ(navigation_->topViewController(), b_);
    EXPECT_NE(b_->view()->window(), nullptr);
}

TEST_F(ControllerLifecycle, TheEditButtonTogglesAndSaysSo) {
    const auto item = a_->editButtonItem();
    a_->navigationItem().setRightBarButtonItem(item);
    ASSERT_EQ(item->title(), "Edit");
    tapButton("Edit");
    EXPECT_TRUE(a_->isEditing());
    EXPECT_EQ(item->title(), "Done");
    tapButton("Done");
    EXPECT_FALSE(a_->isEditing());
    EXPECT_EQ(item->style(), UIBarButtonItemStyle::Bordered);
}

TEST_F(ControllerLifecycle, ScreensAreFreedWhenTheyLeaveTheStack) {
    std::weak_ptr<UIViewController> pushed = b_;
    navigation_->pushViewController(std::exchange(b_, nullptr), true);
    advance(1);
    navigation_->popViewControllerAnimated(true);
    advance(1);
    EXPECT_TRUE(pushed.expired());
    std::weak_ptr<UIViewController> presented = c_;
    a_->presentModalViewController(std::exchange(c_, nullptr), true);
    advance(1);
    a_->dismissModalViewControllerAnimated(true);
    advance(1);
    EXPECT_TRUE(presented.expired());
}

}
}
