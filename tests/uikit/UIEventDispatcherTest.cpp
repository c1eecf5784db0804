#include "platform/uikit/UIEventDispatcher.h"

#include "platform/uikit/UIKey.h"
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

/// Notes what it hears.
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
        if (onEnd) {
            onEnd();
        }
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
    void down(double x, double y) { send(UITouchPhase::Began, x, y); }
    void move(double x, double y) { send(UITouchPhase::Moved, x, y); }
    void up(double x, double y) { send(UITouchPhase::Ended, x, y); }
    void send(UITouchPhase phase, double x, double y) {
        dispatcher().sendTouch(phase, {x, y}, loop().now());
    }
    void tap(double x, double y) {
        down(x, y);
        up(x, y);
    }
    Events taken() { return std::exchange(events, {}); }
    bool key(UIKeyCode code, bool shift = false) {
        return dispatcher().sendKey({code, {}, shift, false, false});
    }

    Events events;
    std::shared_ptr<Listener> list =
        std::make_shared<Listener>("list", CGRectMake(0, 100, 320, 300), events);
    std::shared_ptr<Listener> row =
        std::make_shared<Listener>("row", CGRectMake(0, 50, 320, 44), events);
};

TEST_F(UIEventDispatcherTest, OneViewOwnsATouchFromDownToUp) {
    down(10, 160);
    EXPECT_EQ(dispatcher().touchOwner(), row);
    move(10, 390);
    up(10, 470);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row moved 10,240", "row ended 10,320"));
    EXPECT_EQ(dispatcher().touchOwner(), nullptr);
    move(10, 160);
    up(10, 160);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(UIEventDispatcherTest, ASecondFingerIsIgnored) {
    down(10, 160);
    down(10, 110);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10"));
}

TEST_F(UIEventDispatcherTest, AScrollingAncestorTakesTheTouchOver) {
    list->captureDistance = 10;
    down(10, 160);
    move(10, 165);
    move(10, 172);
    move(10, 180);
    up(10, 180);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row moved 10,15", "row cancelled 10,22",
                                     "list began 10,72", "list moved 10,72", "list moved 10,80",
                                     "list ended 10,80"));
}

TEST_F(UIEventDispatcherTest, TheInnermostOfTwoCapturingAncestorsIsFirst) {
    auto inner = std::make_shared<Listener>("inner", CGRectMake(0, 100, 320, 100), events);
    auto leaf = std::make_shared<Listener>("leaf", CGRectMake(0, 0, 320, 100), events);
    list->addSubview(inner);
    inner->addSubview(leaf);
    list->captureDistance = 20;
    inner->captureDistance = 10;
    down(5, 210);
    move(5, 225);
    EXPECT_EQ(dispatcher().touchOwner(), inner);
    move(5, 235);
    EXPECT_EQ(dispatcher().touchOwner(), list) << "an outer one may still take over";
}

TEST_F(UIEventDispatcherTest, AListInMotionSwallowsTheTouchThatStopsIt) {
    list->swallows = true;
    tap(10, 160);
    EXPECT_THAT(taken(), ElementsAre("list began 10,60", "list ended 10,60"));
}

TEST_F(UIEventDispatcherTest, TapsInOnePlaceAreCounted) {
    const auto tapsAfter = [&](double seconds, double x) {
        advance(seconds);
        tap(x, 160);
        return row->taps;
    };
    EXPECT_EQ(tapsAfter(0, 10), 1);
    EXPECT_EQ(tapsAfter(0.2, 12), 2);
    EXPECT_EQ(tapsAfter(0.2, 12), 3);
    EXPECT_EQ(tapsAfter(0.6, 12), 1) << "too late";
    EXPECT_EQ(tapsAfter(0.1, 200), 1) << "too far";
    down(200, 160);
    move(260, 160);
    up(260, 160);
    EXPECT_EQ(tapsAfter(0.1, 260), 1) << "a drag is no tap";
}

TEST_F(UIEventDispatcherTest, AnOwnerThatGoesHearsTheTouchCancelled) {
    down(10, 160);
    row->setHidden(true);
    move(10, 161);
    up(10, 161);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row cancelled 10,11"));
    row->setHidden(false);
    down(10, 160);
    row->removeFromSuperview();
    up(10, 160);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", testing::StartsWith("row cancelled")));
    list->addSubview(row);
    down(10, 160);
    row->removeFromSuperview();
    row.reset();
    move(10, 165);
    up(10, 165);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10")) << "destroyed under the finger";
}

TEST_F(UIEventDispatcherTest, WhatATapSetsOffMayCancelTouches) {
    row->onEnd = [&] {
        dispatcher().cancelTouch();
    };
    tap(10, 160);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row ended 10,10"));
    down(10, 160);
    dispatcher().cancelTouch();
    dispatcher().cancelTouch();
    up(10, 160);
    EXPECT_THAT(taken(), ElementsAre("row began 10,10", "row cancelled 10,10"));
}

TEST_F(UIEventDispatcherTest, AWindowAboveTakesTheTouchesBelowIt) {
    auto alert = std::make_shared<UIWindow>();
    alert->setWindowLevel(UIWindowLevelAlert);
    alert->makeKeyAndVisible();
    tap(10, 160);
    EXPECT_THAT(taken(), IsEmpty());
    alert->removeFromSuperview();
    tap(10, 160);
    EXPECT_EQ(taken().size(), 2U);
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

TEST_F(UIEventDispatcherTest, KeysClimbFromTheFocusedView) {
    row->focusable = true;
    dispatcher().setFirstResponder(row);
    list->usedKey = UIKeyCode::Enter;
    EXPECT_TRUE(key(UIKeyCode::Enter));
    EXPECT_THAT(taken(), ElementsAre("row focused", "row key", "list key"));
    row->usedKey = UIKeyCode::Enter;
    EXPECT_TRUE(key(UIKeyCode::Enter));
    EXPECT_THAT(taken(), ElementsAre("row key"));
}

TEST_F(UIEventDispatcherTest, WithoutFocusKeysGoToTheFrontmostList) {
    auto other = std::make_shared<Listener>("other", CGRectMake(0, 0, 320, 50), events);
    window().addSubview(other);
    list->takesKeys = other->takesKeys = true;
    list->usedKey = other->usedKey = UIKeyCode::Down;
    EXPECT_TRUE(key(UIKeyCode::Down));
    EXPECT_THAT(taken(), ElementsAre("other key"));
    other->setHidden(true);
    EXPECT_TRUE(key(UIKeyCode::Down));
    EXPECT_THAT(taken(), ElementsAre("list key"));
    EXPECT_FALSE(key(UIKeyCode::Left));
    list->setUserInteractionEnabled(false);
    taken();
    EXPECT_FALSE(key(UIKeyCode::Down));
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(UIEventDispatcherTest, FocusBehindAnAlertGetsNoKeys) {
    dispatcher().setFirstResponder(row);
    auto alert = std::make_shared<UIWindow>();
    alert->setWindowLevel(UIWindowLevelAlert);
    auto panel = std::make_shared<Listener>("panel", CGRectMake(0, 0, 100, 100), events);
    panel->takesKeys = true;
    panel->usedKey = UIKeyCode::Enter;
    alert->addSubview(panel);
    alert->makeKeyAndVisible();
    taken();
    EXPECT_TRUE(key(UIKeyCode::Enter));
    EXPECT_THAT(taken(), ElementsAre("panel key"));
    alert->removeFromSuperview();
    taken();
    key(UIKeyCode::Enter);
    EXPECT_THAT(taken(), ElementsAre("row key", "list key"));
}

TEST_F(UIEventDispatcherTest, TabMovesTheFocusInTheOrderOfTheTree) {
    auto other = std::make_shared<Listener>("other", CGRectMake(0, 0, 10, 10), events);
    window().addSubview(other);
    row->focusable = other->focusable = true;
    key(UIKeyCode::Tab);
    EXPECT_EQ(dispatcher().firstResponder(), row);
    taken();
    key(UIKeyCode::Tab);
    EXPECT_THAT(taken(), ElementsAre("row key", "list key", "row left", "other focused"));
    key(UIKeyCode::Tab);
    EXPECT_EQ(dispatcher().firstResponder(), row) << "round";
    key(UIKeyCode::Tab, true);
    EXPECT_EQ(dispatcher().firstResponder(), other);
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
    EXPECT_TRUE(key(UIKeyCode::Escape));
    EXPECT_THAT(taken(), ElementsAre("top", "container"));
    container->view()->removeFromSuperview();
    auto modal = screen("modal", false);
    window().addSubview(modal->view());
    EXPECT_FALSE(key(UIKeyCode::Escape));
    EXPECT_THAT(taken(), ElementsAre("modal"));
}

}
}
