#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UINavigationBar.h"
#include "tests/support/Heard.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

/// Logs its calls: "B+will~" is viewWillAppear of B, animated; "B-did" is viewDidDisappear of B,
/// not animated.
class RecordingController : public UIViewController {
public:
    RecordingController(std::string name, support::Heard& log)
        : log_(log) {
        setTitle(std::move(name));
    }

    void viewDidLoad() override {
        heightAtLoad = view()->frame().size.height;
        log_(title() + " load");
    }
    void viewDidUnload() override { log_(title() + " unload"); }
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
    void heard(const char* what, bool animated) { log_(title() + what + (animated ? "~" : "")); }

    support::Heard& log_;
};

/// What is done, what the screens hear of it at once and until every slide is over, and which of
/// them are in the window then. Null: not checked.
struct Step {
    const char* actions;
    const char* heard = nullptr;
    const char* heardLater = nullptr;
    const char* seen = nullptr;
};

class ControllerLifecycle : public support::ScreenTest {
protected:
    void SetUp() override {
        navigation_ = UINavigationController::withRootViewController(a_);
        window().addSubview(navigation_->view());
        heard();
    }

    std::string heard() { return log_.take(); }
    /// Long enough for every slide.
    std::string heardLater() {
        advance(1);
        return heard();
    }
    std::shared_ptr<RecordingController> make(const std::string& name) {
        return std::make_shared<RecordingController>(name, log_);
    }
    UIViewController& named(const std::string& name) {
        return name == "stack" ? *navigation_ : static_cast<UIViewController&>(*screens_.at(name));
    }
    /// "push B", "pop", "root", "present A M" (on A), "dismiss M", each animated with "~" after the
    /// verb; "moment" and "later" let time pass, "memory" is a warning, "escape" the key.
    void perform(const std::string& actions) {
        std::istringstream each(actions);
        for (std::string action; std::getline(each >> std::ws, action, ';');)
            performOne(action);
    }
    void performOne(const std::string& action) {
        std::istringstream words(action);
        std::string verb;
        std::string first;
        std::string second;
        words >> verb >> first >> second;
        const bool animated = verb.ends_with('~');
        verb = verb.substr(0, verb.find('~'));
        if (verb == "push")
            navigation_->pushViewController(screens_.at(first), animated);
        else if (verb == "pop")
            navigation_->popViewControllerAnimated(animated);
        else if (verb == "root")
            navigation_->popToRootViewControllerAnimated(animated);
        else if (verb == "present")
            named(first).presentModalViewController(screens_.at(second), animated);
        else if (verb == "dismiss")
            named(first).dismissModalViewControllerAnimated(animated);
        else if (verb == "memory")
            application().receiveMemoryWarning();
        else if (verb == "moment" || verb == "later")
            advance(verb == "moment" ? 0.1 : 1);
        else if (verb == "escape" && !press(UIKeyCode::Escape))
            log_("ignored");
    }
    std::string seen() {
        std::string names;
        for (const auto& [name, screen] : screens_) {
            if (screen->isViewLoaded() && screen->view()->window())
                names += name;
        }
        return names;
    }
    /// What holds whenever nothing slides.
    void expectOrder() {
        EXPECT_EQ(navigation_->view()->frame(), CGRectMake(0, 20, 320, 460));
        for (const auto& [name, screen] : screens_) {
            SCOPED_TRACE(name);
            const auto& stack = navigation_->viewControllers();
            const bool isInStack = std::ranges::find(stack, screen) != stack.end();
            EXPECT_EQ(screen->navigationController(), isInStack ? navigation_.get() : nullptr);
            if (!screen->isViewLoaded() || !screen->view()->window())
                continue;
            EXPECT_EQ(screen->heightAtLoad, 460);
            EXPECT_EQ(screen->view()->frame(),
                      isInStack ? CGRectMake(0, 0, 320, 416) : CGRectMake(0, 20, 320, 460));
            EXPECT_EQ(screen->parentViewController(), navigation_.get());
        }
    }

    support::Heard log_;
    std::shared_ptr<RecordingController> a_ = make("A");
    std::shared_ptr<RecordingController> b_ = make("B");
    std::shared_ptr<RecordingController> m_ = make("M");
    std::map<std::string, std::shared_ptr<RecordingController>> screens_{
        {"A", a_}, {"B", b_}, {"C", make("C")}, {"M", m_}, {"N", make("N")}};
    std::shared_ptr<UINavigationController> navigation_;
};

TEST_F(ControllerLifecycle, ARootAppearsWhenItsStackComesIntoTheWindow) {
    const auto root = make("R");
    const auto stack = UINavigationController::withRootViewController(root);
    EXPECT_EQ(heard(), "");
    window().addSubview(stack->view());
    EXPECT_EQ(heard(), "R load, R+will, R+did");
    stack->view()->removeFromSuperview();
    EXPECT_EQ(heard(), "R-will, R-did");
}

struct Scenario {
    const char* name;
    std::vector<Step> steps;
};

const Scenario kScenarios[] = {
    {"PushAndPop",
     {{"push~ B", "B load, A-will~, B+will~", "A-did~, B+did~", "B"},
      {"pop~", "B-will~, A+will~", "B-did~, A+did~", "A"},
      {"push B", "A-will, B+will, A-did, B+did", "", "B"},
      {"pop", "B-will, A+will, B-did, A+did", "", "A"},
      {"pop~", "", ""}}},
    {"APushDuringASlideEndsTheSlideFirst",
     {{"push~ B; moment"},
      {"push~ C", "A-did~, B+did~, C load, B-will~, C+will~", "B-did~, C+did~", "C"}}},
    {"APopDuringAPush",
     {{"push~ B; moment"}, {"pop~", "A-did~, B+did~, B-will~, A+will~", "B-did~, A+did~", "A"}}},
    {"APushOfTheScreenThatSlidesOut",
     {{"push B; pop~; moment"},
      {"push~ B", "B-did~, A+did~, A-will~, B+will~", "A-did~, B+did~", "B"}}},
    {"ScreensInTheMiddleHearNothingOfAPopToTheRoot",
     {{"push B; push C"}, {"root~", "C-will~, A+will~", "C-did~, A+did~", "A"}}},
    {"AModalScreenOfAScreen",
     {{"present~ A M", "M load, A-will~, M+will~", "M+did~, A-did~", "M"},
      {"dismiss~ M", "M-will~, A+will~", "A+did~, M-did~", "A"}}},
    {"AModalScreenOfTheStack",
     {{"present~ stack M", "M load, A-will~, M+will~", "M+did~, A-did~", "M"},
      {"dismiss~ stack", "M-will~, A+will~", "A+did~, M-did~", "A"}}},
    {"ADismissalDuringAPresentation",
     {{"present~ A M; moment"},
      {"dismiss~ M; dismiss~ M", "M+did~, A-did~, M-will~, A+will~", "A+did~, M-did~", "A"}}},
    {"APresentationDuringADismissal",
     {{"present A M; dismiss~ A"},
      {"present A N", "A+did~, M-did~, N load, A-will, N+will, N+did, A-did", "", "N"}}},
    {"OneModalScreenAtATime", {{"present A M"}, {"present~ stack N", "", "", "M"}}},
    {"DismissalTakesEveryScreenAboveAlong",
     {{"present A M; present M N"},
      {"dismiss~ A", "N-will, M+will, M+did, N-did, M-will~, A+will~", "A+did~, M-did~", "A"}}},
    {"AScreenPushedWhileCoveredAppearsWithItsStack",
     {{"present A M"},
      {"push~ B", "B load", "", "M"},
      {"dismiss M", "M-will, B+will, B+did, M-did", "", "B"}}},
    {"AMemoryWarningUnloadsOnlyUnseenViews",
     {{"push B; push C"},
      {"memory", "A unload, B unload"},
      {"pop", "B load, C-will, B+will, C-did, B+did", "", "B"}}},
    {"AViewUnloadedUnderAModalScreenIsLoadedAtDismissal",
     {{"present A M"},
      {"memory", "A unload"},
      {"dismiss M", "M-will, A load, A+will, A+did, M-did", "", "A"}}},
    {"EscapeGoesBackAndClosesModalScreens",
     {{"push B; present B M"},
      {"escape", "M-will~, B+will~", "B+did~, M-did~", "B"},
      {"escape", "B-will~, A+will~", "B-did~, A+did~", "A"},
      {"escape", "ignored"}}},
};

class ControllerScenario : public ControllerLifecycle,
                           public testing::WithParamInterface<Scenario> {};

TEST_P(ControllerScenario, IsHeardInThePhonesOrder) {
    for (const auto& [actions, now, later, visible] : GetParam().steps) {
        SCOPED_TRACE(actions);
        heard();
        perform(actions);
        if (now) {
            EXPECT_EQ(heard(), now);
        }
        if (later) {
            EXPECT_EQ(heardLater(), later);
        }
        if (visible) {
            EXPECT_EQ(seen(), visible);
        }
    }
    heardLater();
    expectOrder();
}

INSTANTIATE_TEST_SUITE_P(Screens, ControllerScenario, testing::ValuesIn(kScenarios),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

TEST_F(ControllerLifecycle, AScreenThatRotatesItselfStaysRotatedThroughTheSlide) {
    a_->presentModalViewController(m_, true);
    UIView& view = *m_->view();
    EXPECT_GT(view.presentationState().center.y, 480) << "from below";
    advance(0.05);
    view.setBounds(CGRectMake(0, 0, 480, 320));
    view.setCenter({160, 240});
    view.setTransform(CGAffineTransformMakeRotation(1.5707963267948966));
    advance(1);
    EXPECT_EQ(view.bounds(), CGRectMake(0, 0, 480, 320));
    EXPECT_EQ(view.presentationState().center, (CGPoint{160, 240}));
    EXPECT_EQ(view.center(), (CGPoint{160, 240}));
}

TEST_F(ControllerLifecycle, AScreenThatClosesItselfWhileAppearingLeavesNothingBehind) {
    m_->onWillAppear = [&] {
        m_->dismissModalViewControllerAnimated(false);
    };
    a_->presentModalViewController(m_, true);
    heardLater();
    EXPECT_EQ(seen(), "A");
    EXPECT_EQ(a_->modalViewController(), nullptr);
}

TEST_F(ControllerLifecycle, ADoubleClickOrTwoQuickEntersOpenOneScreen) {
    int opened = 0;
    std::string opens;
    const auto button = std::make_shared<UIButton>(CGRectMake(0, 0, 320, 400));
    button->addTarget(
        [&] {
            ++opened;
            perform(opens);
        },
        UIControlEventTouchUpInside);
    a_->view()->addSubview(button);
    for (const char* action : {"push~ B", "present~ stack M"}) {
        for (const char* activate : {"tap 20,200", "key Enter"}) {
            SCOPED_TRACE(action);
            opens = action;
            opened = 0;
            application().events().setFirstResponder(button);
            act(std::string(activate) + "; wait 0.1; " + activate + "; key Escape");
            EXPECT_EQ(opened, 1);
            perform("later; dismiss~ stack; root~; later");
            application().events().setFirstResponder(button);
            act(activate);
            EXPECT_EQ(opened, 2) << "the screen accepts touches and keys again";
            perform("dismiss~ stack; root~; later");
        }
    }
    button->removeFromSuperview();
    perform("push B; push C");
    act("button B; wait 0.1; tap 20,42; wait 1");
    EXPECT_EQ(navigation_->topViewController(), b_) << "one back button, one step back";
}

TEST_F(ControllerLifecycle, AScreenThatSlidesOutHasLeftItsStack) {
    perform("push B; pop~; moment");
    EXPECT_EQ(b_->navigationController(), nullptr);
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
    for (auto* screen : {&b_, &m_}) {
        const std::weak_ptr<UIViewController> gone = *screen;
        perform(screen == &b_ ? "push~ B; later; pop~; later"
                              : "present~ A M; later; dismiss~ A; later");
        screens_.erase(gone.lock()->title());
        screen->reset();
        EXPECT_TRUE(gone.expired());
    }
}

}
}
