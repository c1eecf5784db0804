#include "platform/uikit/UIEventDispatcher.h"

#include "platform/uikit/BitmapVisitor.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UIViewController.h"
#include "tests/support/Heard.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

/// Records what it hears.
class Listener : public UIView {
public:
    Listener(std::string name, CGRect frame, support::Heard& events)
        : UIView(frame)
        , name_(std::move(name))
        , events_(events) {}

    void touchesBegan(const UITouch& touch) override { note("began", touch); }
    void touchesMoved(const UITouch& touch) override { note("moved", touch); }
    void touchesEnded(const UITouch& touch) override {
        note("ended", touch);
        if (onEnd)
            onEnd();
    }
    void touchesCancelled(const UITouch& touch) override { note("cancelled", touch); }
    bool shouldCaptureTouch(const UITouch& touch) override {
        return captureDistance > 0 &&
               touch.windowLocation.y - touch.startWindowLocation.y >= captureDistance;
    }
    bool touchWillBeginInside(const UITouch&) override { return swallows; }
    bool keyPressed(const UIKey& key) override {
        events_(name_ + " key");
        return key.code == usedKey;
    }
    bool scrollBy(double /*dx*/, double dy, double) override {
        return captureDistance > 0 && dy > 0 && (events_(name_ + " scrolled"), true);
    }
    bool canBecomeFirstResponder() const override { return focusable; }
    bool takesUnfocusedKeys() const override { return takesKeys || UIView::takesUnfocusedKeys(); }
    void focusChanged(bool focused) override { events_(name_ + (focused ? " focused" : " left")); }

    double captureDistance = 0;
    bool swallows = false;
    bool focusable = false;
    bool takesKeys = false;
    UIKeyCode usedKey = UIKeyCode::End;
    std::function<void()> onEnd;
    int taps = 0;

private:
    void note(const char* what, const UITouch& touch) {
        const auto at = touch.locationInView(*this);
        events_(name_ + " " + what + " " + std::to_string(static_cast<int>(at.x)) + "," +
                std::to_string(static_cast<int>(at.y)));
        taps = touch.tapCount;
    }
    std::string name_;
    support::Heard& events_;
};

class UIEventDispatcherTest : public support::ScreenTest {
protected:
    UIEventDispatcherTest() { list->addSubview(row); }
    UIEventDispatcher& dispatcher() { return application().events(); }
    std::shared_ptr<Listener> listener(const std::string& name, CGRect frame) {
        return add<Listener>(name, frame, events);
    }
    std::string taken() { return events.take(); }
    void expectSteps(const std::vector<Step>& steps) {
        ScreenTest::expectSteps(steps, [this] { return taken(); });
    }
    /// Of the screen with the ring around what has the focus.
    std::string picture() {
        auto bitmap = std::make_shared<Bitmap>(320, 480);
        BitmapVisitor visitor(bitmap, 1);
        application().walkScreen(visitor);
        return std::string(bitmap->data(), bitmap->data() + std::ptrdiff_t{480} * bitmap->stride());
    }
    support::Heard events;
    std::shared_ptr<Listener> list = listener("list", CGRectMake(0, 100, 320, 300));
    std::shared_ptr<Listener> row = listener("row", CGRectMake(0, 50, 320, 44));
};

TEST_F(UIEventDispatcherTest, OneViewOwnsTheFirstTouchFromDownToUp) {
    touchDown({10, 160});
    EXPECT_EQ(dispatcher().touchOwner(), row);
    expectSteps({{"down 10,110; move 10,390; up 10,470", // the first is that of a second finger
                  "row began 10,10, row moved 10,240, row ended 10,320"}});
    EXPECT_EQ(dispatcher().touchOwner(), nullptr);
    expectSteps({{"move 10,160; up 10,160", ""}});
}

TEST_F(UIEventDispatcherTest, AScrollingAncestorTakesTheTouchOver) {
    list->captureDistance = 10;
    expectSteps({{"down 10,160; move 10,165", "row began 10,10, row moved 10,15"},
                 {"move 10,172", "row cancelled 10,22, list began 10,72, list moved 10,72"},
                 {"move 10,180; up 10,180", "list moved 10,80, list ended 10,80"}});
    auto inner = listener("inner", CGRectMake(0, 100, 320, 100));
    list->addSubview(inner);
    inner->addSubview(row);
    list->captureDistance = 20;
    inner->captureDistance = 10;
    act("down 5,260; move 5,275");
    EXPECT_EQ(dispatcher().touchOwner(), inner) << "the innermost first";
    act("move 5,285");
    EXPECT_EQ(dispatcher().touchOwner(), list) << "an outer one may still take over";
}

TEST_F(UIEventDispatcherTest, AMovingListSwallowsTheTouchThatStopsIt) {
    list->swallows = true;
    expectSteps({{"tap 10,160", "list began 10,60, list ended 10,60"}});
}

TEST_F(UIEventDispatcherTest, TapsInOnePlaceAreCounted) {
    ScreenTest::expectSteps(
        {{"tap 10,160", "1"},
         {"wait 0.2; tap 12,160", "2"},
         {"wait 0.2; tap 12,160", "3"},
         {"wait 0.6; tap 12,160", "1"},  // too late
         {"wait 0.1; tap 200,160", "1"}, // too far
         {"down 200,160; move 260,160; up 260,160; wait 0.1; tap 260,160", "1"}},
        [this] { return std::to_string(row->taps); });
}

TEST_F(UIEventDispatcherTest, AnOwnerThatLeavesHearsThatItsTouchIsCancelled) {
    act("down 10,160");
    row->setHidden(true);
    expectSteps({{"move 10,161; up 10,161", "row began 10,10, row cancelled 10,11"}});
    row->setHidden(false);
    act("down 10,160");
    row->removeFromSuperview();
    act("up 10,160");
    EXPECT_THAT(taken(), StartsWith("row began 10,10, row cancelled"));
    list->addSubview(row);
    act("down 10,160");
    row->removeFromSuperview();
    row.reset();
    expectSteps({{"move 10,165; up 10,165", "row began 10,10"}}); // destroyed under the finger
}

TEST_F(UIEventDispatcherTest, ATapMayCancelTouches) {
    row->onEnd = [&] {
        dispatcher().cancelTouch();
    };
    expectSteps({{"tap 10,160", "row began 10,10, row ended 10,10"}});
    act("down 10,160");
    dispatcher().cancelTouch();
    dispatcher().cancelTouch();
    expectSteps({{"up 10,160", "row began 10,10, row cancelled 10,10"}});
}

TEST_F(UIEventDispatcherTest, AWheelStepGoesToTheInnermostViewThatCanScroll) {
    auto outer = listener("outer", CGRectMake(0, 0, 320, 480));
    outer->addSubview(list);
    outer->captureDistance = 1;
    expectSteps({{"wheel 10,160 5", "outer scrolled"}});
    list->captureDistance = 1;
    expectSteps({{"wheel 10,160 5; wheel 10,160 -5", "list scrolled"}});
}

TEST_F(UIEventDispatcherTest, WithoutFocusKeysGoToTheFrontmostList) {
    auto other = listener("other", CGRectMake(0, 0, 320, 50));
    list->takesKeys = other->takesKeys = true;
    list->usedKey = other->usedKey = UIKeyCode::Down;
    EXPECT_TRUE(press(UIKeyCode::Down));
    EXPECT_EQ(taken(), "other key");
    other->setHidden(true);
    EXPECT_TRUE(press(UIKeyCode::Down));
    EXPECT_FALSE(press(UIKeyCode::Left));
    EXPECT_EQ(taken(), "list key, list key");
    const auto unfocused = picture();
    list->focusable = true;
    EXPECT_TRUE(press(UIKeyCode::Down));
    EXPECT_EQ(dispatcher().firstResponder(), list) << "arrows move over its rows";
    EXPECT_NE(picture(), unfocused);
    dispatcher().setFirstResponder(nullptr);
    taken();
    list->setUserInteractionEnabled(false);
    EXPECT_FALSE(press(UIKeyCode::Down));
    EXPECT_EQ(taken(), "");
}

TEST_F(UIEventDispatcherTest, AWindowAboveTakesTouchesAndKeys) {
    dispatcher().setFirstResponder(row);
    auto alert = std::make_shared<UIWindow>();
    alert->setWindowLevel(UIWindowLevelAlert);
    auto panel = listener("panel", CGRectMake(0, 0, 100, 100));
    panel->takesKeys = true;
    panel->usedKey = UIKeyCode::Enter;
    alert->addSubview(panel);
    alert->makeKeyAndVisible();
    taken();
    expectSteps({{"tap 10,160; key Enter", "panel key"}});
    alert->removeFromSuperview();
    taken();
    tap(CGPoint{10, 160});
    EXPECT_FALSE(press(UIKeyCode::Enter));
    EXPECT_EQ(taken(), "row began 10,10, row ended 10,10, row key, list key") << "keys climb";
    row->usedKey = UIKeyCode::Enter;
    EXPECT_TRUE(press(UIKeyCode::Enter));
    EXPECT_EQ(taken(), "row key") << "until one is used";
}

TEST_F(UIEventDispatcherTest, KeysMoveAVisibleFocusAsThePictureReads) {
    auto other = listener("other", CGRectMake(100, 10, 50, 50));
    auto first = listener("first", CGRectMake(20, 20, 50, 50));
    row->focusable = other->focusable = first->focusable = true;
    dispatcher().setFirstResponder(row);
    const auto untouched = picture();
    const std::tuple<UIKeyCode, bool, std::shared_ptr<UIView>> kMoves[] = {
        {UIKeyCode::Tab, false, first},  {UIKeyCode::Tab, false, other},
        {UIKeyCode::Down, false, row},   {UIKeyCode::Right, false, first},
        {UIKeyCode::Tab, true, row},     {UIKeyCode::Up, false, other},
        {UIKeyCode::Left, false, first},
    };
    for (const auto& [key, shift, focused] : kMoves) {
        framesComposedIn(0.1);
        EXPECT_TRUE(press(key, shift));
        EXPECT_EQ(dispatcher().focusedPart(), focused);
        EXPECT_TRUE(display().frameIsAskedFor()) << "the ring moves";
        EXPECT_NE(picture(), untouched);
    }
    tap(CGPoint{300, 470});
    EXPECT_EQ(picture(), untouched) << "a finger needs no ring";
}

/// Records the commands and Escapes that it is asked about.
class RecordingScreen : public UIViewController {
public:
    RecordingScreen(std::string name, bool leaves, support::Heard& events)
        : takes(leaves)
        , name_(std::move(name))
        , events_(events) {}
    bool performCommand(UICommand command) override {
        commands.push_back(command);
        return takes;
    }
    bool escapePressed() override {
        events_(name_);
        return takes;
    }
    std::vector<UICommand> commands;
    bool takes;

private:
    std::string name_;
    support::Heard& events_;
};

TEST_F(UIEventDispatcherTest, EveryShortcutReachesTheScreenThenTheWindow) {
    auto screen = std::make_shared<RecordingScreen>("screen", true, events);
    window().addSubview(screen->view());
    std::vector<UICommand> expected;
    for (const auto& shortcut : kShortcuts) {
        UIKey key{shortcut.code, std::string(shortcut.character), false, shortcut.control,
                  shortcut.alt};
        EXPECT_TRUE(dispatcher().sendKey(key)) << shortcut.keys;
        expected.push_back(shortcut.command);
        key.alt = !key.alt;
        EXPECT_FALSE(commandForKey(key)) << shortcut.keys;
    }
    EXPECT_EQ(screen->commands, expected);
    screen->takes = false;
    EXPECT_TRUE(dispatcher().sendCommand(UICommand::FullScreen));
    EXPECT_FALSE(dispatcher().sendCommand(UICommand::Reload));
    EXPECT_TRUE(display().isFullScreen() && !display().isClosed());
    EXPECT_TRUE(dispatcher().sendKey({UIKeyCode::Character, "Q", true, true}));
    EXPECT_TRUE(display().isClosed());
}

TEST_F(UIEventDispatcherTest, EscapeAsksTheInnermostScreenFirstAndNeverTheOnesBehind) {
    const auto screen = [&](const char* name, bool leaves, UIView& above) {
        auto made = std::make_shared<RecordingScreen>(name, leaves, events);
        above.addSubview(made->view());
        return made;
    };
    auto covered = screen("covered", true, window());
    auto container = screen("container", true, window());
    auto top = screen("top", false, *container->view());
    EXPECT_TRUE(press(UIKeyCode::Escape));
    EXPECT_EQ(taken(), "top, container");
    container->view()->removeFromSuperview();
    auto modal = screen("modal", false, window());
    EXPECT_FALSE(press(UIKeyCode::Escape));
    EXPECT_EQ(taken(), "modal");
}

}
}
