#include "platform/uikit/UIEventDispatcher.h"

#include "platform/uikit/BitmapVisitor.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UIViewController.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Events = std::vector<std::string>;

/// Records what it hears.
class Listener : public UIView {
public:
    Listener(std::string name, CGRect frame, Events& events)
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
        events_.push_back(name_ + " key");
        return key.code == usedKey;
    }
    bool scrollBy(double /*dx*/, double dy, double) override {
        return captureDistance > 0 && dy > 0 && (events_.push_back(name_ + " scrolled"), true);
    }
    bool canBecomeFirstResponder() const override { return focusable; }
    bool takesUnfocusedKeys() const override { return takesKeys || UIView::takesUnfocusedKeys(); }
    void focusChanged(bool focused) override {
        events_.push_back(name_ + (focused ? " focused" : " left"));
    }

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
        events_.push_back(name_ + " " + what + " " + std::to_string(static_cast<int>(at.x)) + "," +
                          std::to_string(static_cast<int>(at.y)));
        taps = touch.tapCount;
    }
    std::string name_;
    Events& events_;
};

class UIEventDispatcherTest : public support::ScreenTest {
protected:
    UIEventDispatcherTest() {
        window().addSubview(list);
        list->addSubview(row);
    }
    UIEventDispatcher& dispatcher() { return application().events(); }
    Events taken() { return std::exchange(events, {}); }
    Events events;
    std::shared_ptr<Listener> list =
        std::make_shared<Listener>("list", CGRectMake(0, 100, 320, 300), events);
    std::shared_ptr<Listener> row =
        std::make_shared<Listener>("row", CGRectMake(0, 50, 320, 44), events);
};

TEST_F(UIEventDispatcherTest, OneViewOwnsTheFirstTouchFromDownToUp) {
    touchDown({10, 160});
    EXPECT_EQ(dispatcher().touchOwner(), row);
    touchDown({10, 110}); // a second finger
    touchMove({10, 390});
    touchUp({10, 470});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row moved 10,240", "row ended 10,320"));
    EXPECT_EQ(dispatcher().touchOwner(), nullptr);
    touchMove({10, 160});
    touchUp({10, 160});
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(UIEventDispatcherTest, AScrollingAncestorTakesTheTouchOver) {
    list->captureDistance = 10;
    touchDown({10, 160});
    touchMove({10, 165});
    touchMove({10, 172});
    touchMove({10, 180});
    touchUp({10, 180});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row moved 10,15", "row cancelled 10,22",
                                     "list began 10,72", "list moved 10,72", "list moved 10,80",
                                     "list ended 10,80"));

    auto inner = std::make_shared<Listener>("inner", CGRectMake(0, 100, 320, 100), events);
    list->addSubview(inner);
    inner->addSubview(row);
    list->captureDistance = 20;
    inner->captureDistance = 10;
    touchDown({5, 260});
    touchMove({5, 275});
    EXPECT_EQ(dispatcher().touchOwner(), inner) << "the innermost first";
    touchMove({5, 285});
    EXPECT_EQ(dispatcher().touchOwner(), list) << "an outer one may still take over";
}

TEST_F(UIEventDispatcherTest, AMovingListSwallowsTheTouchThatStopsIt) {
    list->swallows = true;
    tap(CGPoint{10, 160});
    EXPECT_THAT(taken(), ElementsAre("list began 10,60", "list ended 10,60"));
}

TEST_F(UIEventDispatcherTest, TapsInOnePlaceAreCounted) {
    const auto tapsAfter = [&](double seconds, double x) {
        advance(seconds);
        tap(CGPoint{x, 160});
        return row->taps;
    };
    EXPECT_EQ(tapsAfter(0, 10), 1);
    EXPECT_EQ(tapsAfter(0.2, 12), 2);
    EXPECT_EQ(tapsAfter(0.2, 12), 3);
    EXPECT_EQ(tapsAfter(0.6, 12), 1) << "too late";
    EXPECT_EQ(tapsAfter(0.1, 200), 1) << "too far";
    touchDown({200, 160});
    touchMove({260, 160});
    touchUp({260, 160});
    EXPECT_EQ(tapsAfter(0.1, 260), 1) << "a drag is not a tap";
}

TEST_F(UIEventDispatcherTest, AnOwnerThatLeavesHearsThatItsTouchIsCancelled) {
    touchDown({10, 160});
    row->setHidden(true);
    touchMove({10, 161});
    touchUp({10, 161});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row cancelled 10,11"));
    row->setHidden(false);
    touchDown({10, 160});
    row->removeFromSuperview();
    touchUp({10, 160});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", testing::StartsWith("row cancelled")));
    list->addSubview(row);
    touchDown({10, 160});
    row->removeFromSuperview();
    row.reset();
    touchMove({10, 165});
    touchUp({10, 165});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10")) << "destroyed under the finger";
}

TEST_F(UIEventDispatcherTest, ATapMayCancelTouches) {
    row->onEnd = [&] {
        dispatcher().cancelTouch();
    };
    tap(CGPoint{10, 160});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row ended 10,10"));
    touchDown({10, 160});
    dispatcher().cancelTouch();
    dispatcher().cancelTouch();
    touchUp({10, 160});
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row cancelled 10,10"));
}

TEST_F(UIEventDispatcherTest, AWheelStepGoesToTheInnermostViewThatCanScroll) {
    auto outer = std::make_shared<Listener>("outer", CGRectMake(0, 0, 320, 480), events);
    window().addSubview(outer);
    outer->addSubview(list);
    outer->captureDistance = 1;
    dispatcher().sendScroll({10, 160}, 0, 5, 0);
    list->captureDistance = 1;
    dispatcher().sendScroll({10, 160}, 0, 5, 0);
    dispatcher().sendScroll({10, 160}, 0, -5, 0);
    EXPECT_THAT(taken(), ElementsAre("outer scrolled", "list scrolled"));
}

TEST_F(UIEventDispatcherTest, WithoutFocusKeysGoToTheFrontmostList) {
    auto other = std::make_shared<Listener>("other", CGRectMake(0, 0, 320, 50), events);
    window().addSubview(other);
    list->takesKeys = other->takesKeys = true;
    list->usedKey = other->usedKey = UIKeyCode::Down;
    EXPECT_TRUE(press(UIKeyCode::Down));
    EXPECT_THAT(taken(), ElementsAre("other key"));
    other->setHidden(true);
    EXPECT_TRUE(press(UIKeyCode::Down));
    EXPECT_THAT(taken(), ElementsAre("list key"));
    EXPECT_FALSE(press(UIKeyCode::Left));
    list->setUserInteractionEnabled(false);
    taken();
    EXPECT_FALSE(press(UIKeyCode::Down));
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(UIEventDispatcherTest, AWindowAboveTakesTouchesAndKeys) {
    dispatcher().setFirstResponder(row);
    auto alert = std::make_shared<UIWindow>();
    alert->setWindowLevel(UIWindowLevelAlert);
    auto panel = std::make_shared<Listener>("panel", CGRectMake(0, 0, 100, 100), events);
    panel->takesKeys = true;
    panel->usedKey = UIKeyCode::Enter;
    alert->addSubview(panel);
    alert->makeKeyAndVisible();
    taken();
    tap(CGPoint{10, 160});
    EXPECT_TRUE(press(UIKeyCode::Enter));
    EXPECT_THAT(taken(), ElementsAre("panel key"));
    alert->removeFromSuperview();
    taken();
    tap(CGPoint{10, 160});
    EXPECT_FALSE(press(UIKeyCode::Enter));
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row ended 10,10", "row key", "list key"))
        << "keys climb";
    row->usedKey = UIKeyCode::Enter;
    EXPECT_TRUE(press(UIKeyCode::Enter));
    EXPECT_THAT(taken(), ElementsAre("row key")) << "until one is used";
}

TEST_F(UIEventDispatcherTest, KeysMoveAVisibleFocusAsThePictureReads) {
    const auto picture = [this] {
        auto bitmap = std::make_shared<Bitmap>(320, 480);
        BitmapVisitor visitor(bitmap, 1);
        application().walkScreen(visitor);
        return std::string(bitmap->data(), bitmap->data() + bitmap->stride() * 480);
    };
    auto other = std::make_shared<Listener>("other", CGRectMake(100, 10, 50, 50), events);
    auto first = std::make_shared<Listener>("first", CGRectMake(20, 20, 50, 50), events);
    window().addSubview(other);
    window().addSubview(first);
    row->focusable = other->focusable = first->focusable = true;
    dispatcher().setFirstResponder(row);
    const auto untouched = picture();
    const struct {
        UIKeyCode key;
        bool shift;
        std::shared_ptr<UIView> focused;
    } kMoves[] = {
        {UIKeyCode::Tab, false, first},  {UIKeyCode::Tab, false, other},
        {UIKeyCode::Down, false, row},   {UIKeyCode::Right, false, first},
        {UIKeyCode::Tab, true, row},     {UIKeyCode::Up, false, other},
        {UIKeyCode::Left, false, first},
    };
    for (const auto& move : kMoves) {
        EXPECT_TRUE(press(move.key, move.shift));
        EXPECT_EQ(dispatcher().focusedPart(), move.focused);
        EXPECT_NE(picture(), untouched);
    }
    tap(CGPoint{300, 470});
    EXPECT_EQ(picture(), untouched) << "a finger needs no ring";
}

TEST_F(UIEventDispatcherTest, EveryShortcutReachesTheScreenThenTheWindow) {
    class Commanded : public UIViewController {
    public:
        bool performCommand(UICommand command) override {
            commands.push_back(command);
            return takes;
        }
        std::vector<UICommand> commands;
        bool takes = true;
    };
    auto screen = std::make_shared<Commanded>();
    window().addSubview(screen->view());
    std::vector<UICommand> expected;
    for (const auto& shortcut : kShortcuts) {
        const UIKey key{shortcut.code, std::string(shortcut.character), false, shortcut.control,
                        shortcut.alt};
        EXPECT_TRUE(dispatcher().sendKey(key)) << shortcut.keys;
        expected.push_back(shortcut.command);
        auto plain = key;
        plain.alt = !plain.alt;
        EXPECT_FALSE(commandForKey(plain)) << shortcut.keys;
    }
    EXPECT_EQ(screen->commands, expected);
    screen->takes = false;
    EXPECT_TRUE(dispatcher().sendCommand(UICommand::FullScreen));
    EXPECT_FALSE(dispatcher().sendCommand(UICommand::Reload));
    EXPECT_TRUE(display().isFullScreen() && !display().isClosed());
    EXPECT_TRUE(dispatcher().sendKey({UIKeyCode::Character, "Q", true, true}));
    EXPECT_TRUE(display().isClosed());
}

class EscapableScreen : public UIViewController {
public:
    EscapableScreen(std::string name, bool leaves, Events& events)
        : name_(std::move(name))
        , leaves_(leaves)
        , events_(events) {}
    bool escapePressed() override {
        events_.push_back(name_);
        return leaves_;
    }

private:
    std::string name_;
    bool leaves_;
    Events& events_;
};

TEST_F(UIEventDispatcherTest, EscapeAsksTheInnermostScreenFirstAndNeverTheOnesBehind) {
    const auto screen = [&](const char* name, bool leaves) {
        return std::make_shared<EscapableScreen>(name, leaves, events);
    };
    auto covered = screen("covered", true);
    auto container = screen("container", true);
    auto top = screen("top", false);
    window().addSubview(covered->view());
    window().addSubview(container->view());
    container->view()->addSubview(top->view());
    EXPECT_TRUE(press(UIKeyCode::Escape));
    EXPECT_THAT(taken(), ElementsAre("top", "container"));
    container->view()->removeFromSuperview();
    auto modal = screen("modal", false);
    window().addSubview(modal->view());
    EXPECT_FALSE(press(UIKeyCode::Escape));
    EXPECT_THAT(taken(), ElementsAre("modal"));
}

}
}
