#include "tests/support/ui/ScreenTest.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/UIAccessibilityTree.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIEventDispatcher.h"

namespace vistrel::support {

namespace {

UIEventDispatcher& events() {
    return UIApplication::sharedApplication().events();
}

std::istream& operator>>(std::istream& words, CGPoint& point) {
    char comma = 0;
    return words >> point.x >> comma >> point.y;
}

/// The next word; an unreadable one fails the test.
template <typename T>
T read(std::istream& words) {
    T value{};
    EXPECT_TRUE(words >> value) << "an input is incomplete";
    return value;
}

std::string restOf(std::istream& words) {
    std::string rest;
    std::getline(words >> std::ws, rest);
    return rest;
}

using Views = std::vector<std::shared_ptr<UIView>>;

/// What shows in the view and below it, from back to front.
void collect(const std::shared_ptr<UIView>& view, UIAccessibilityRole role, Views& found) {
    if (view->isHidden() || view->alpha() <= 0)
        return;
    if (view->accessibilityElement().role == role)
        found.push_back(view);
    for (const auto& child : view->subviews())
        collect(child, role, found);
}

}

ScreenTest::ScreenTest()
    : window_(std::make_shared<UIWindow>()) {
    window_->makeKeyAndVisible();
}

ScreenTest::~ScreenTest() {
    for (const auto& alert : UIAlertView::visibleAlerts())
        alert->dismissWithClickedButtonIndex(0, false);
    if (navigation_)
        navigation_->view()->removeFromSuperview();
    navigation_.reset();
    window_.reset();
    UIApplication::resetSharedApplication();
}

UIView& ScreenTest::screen() {
    return UIApplication::sharedApplication().screenView();
}

UINavigationController& ScreenTest::navigation() {
    if (!navigation_) {
        const auto root = std::make_shared<UIViewController>();
        root->setTitle("Root");
        navigation_ = UINavigationController::withRootViewController(root);
        window_->addSubview(navigation_->view());
    }
    return *navigation_;
}

void ScreenTest::push(const std::shared_ptr<UIViewController>& controller) {
    navigation().pushViewController(controller, false);
    turn();
    layOut();
}

void ScreenTest::back() {
    navigation().popViewControllerAnimated(false);
    settle();
}

void ScreenTest::settle() {
    advance(1.5);
    layOut();
}

void ScreenTest::layOut() {
    screen().layoutIfNeeded();
}

std::shared_ptr<Bitmap> ScreenTest::screenshot() {
    return renderViewToBitmap(screen(), 1);
}

int ScreenTest::framesComposedIn(double seconds) {
    constexpr double kStep = 1.0 / 240;
    const int before = display().frames();
    int seen = before;
    for (double passed = 0; passed < seconds; passed += kStep) {
        advance(kStep);
        if (std::exchange(seen, display().frames()) != seen)
            screenshot();
    }
    return seen - before;
}

void ScreenTest::touchDown(CGPoint point) {
    events().sendTouch(UITouchPhase::Began, point, NSRunLoop::now());
}

void ScreenTest::touchMove(CGPoint point) {
    events().sendTouch(UITouchPhase::Moved, point, NSRunLoop::now());
}

void ScreenTest::touchUp(CGPoint point) {
    events().sendTouch(UITouchPhase::Ended, point, NSRunLoop::now());
}

void ScreenTest::tap(CGPoint point) {
    touchDown(point);
    touchUp(point);
    turn();
}

void ScreenTest::tap(const UIView& view) {
    tap(view.convertPointToView({view.bounds().midX(), view.bounds().midY()}, nullptr));
}

void ScreenTest::tapButton(const std::string& label) {
    layOut();
    const auto button = find(UIAccessibilityRole::Button, label);
    ASSERT_NE(button, nullptr) << "no button " << label;
    tap(*button);
}

bool ScreenTest::tapElement(UIAccessibilityRole role, const std::string& label) {
    for (const auto& seen : accessibilityTree(screen())) {
        if (seen.element.role == role && seen.element.label == label) {
            tap(CGPoint{seen.frame.midX(), seen.frame.midY()});
            settle();
            return true;
        }
    }
    return false;
}

bool ScreenTest::press(UIKeyCode code, bool shift) {
    return events().sendKey({.code = code, .text = {}, .shift = shift});
}

bool ScreenTest::type(const std::string& text) {
    return events().sendKey({.text = text});
}

void ScreenTest::drag(CGPoint from, CGPoint to, double seconds) {
    constexpr int kSteps = 6;
    touchDown(from);
    for (int step = 1; step <= kSteps; ++step) {
        advance(seconds / kSteps);
        touchMove(
            {from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
        screenshot();
    }
    touchUp(to);
}

void ScreenTest::act(const std::string& inputs) {
    std::istringstream each(inputs);
    for (std::string input; std::getline(each >> std::ws, input, ';');) {
        std::istringstream words(input);
        perform(read<std::string>(words), words);
    }
}

void ScreenTest::perform(const std::string& verb, std::istream& words) {
    if (verb == "down")
        touchDown(read<CGPoint>(words));
    else if (verb == "move")
        touchMove(read<CGPoint>(words));
    else if (verb == "up")
        touchUp(read<CGPoint>(words));
    else if (verb == "tap")
        tap(read<CGPoint>(words));
    else if (verb == "second")
        events().sendMenuRequest(read<CGPoint>(words));
    else if (verb == "wheel")
        turnWheel(words);
    else if (verb == "drag")
        dragAlong(words);
    else if (verb == "button")
        tapButton(restOf(words));
    else if (verb == "type")
        type(restOf(words));
    else if (verb == "media")
        mediaControls().press(restOf(words));
    else if (verb == "wait")
        advance(read<double>(words));
    else if (verb == "show")
        framesComposedIn(read<double>(words));
    else if (verb == "key" || verb == "shift")
        pressKey(words, verb == "shift");
    else
        ADD_FAILURE() << "no input is called " << verb;
}

void ScreenTest::dragAlong(std::istream& words) {
    const auto from = read<CGPoint>(words);
    const auto to = read<CGPoint>(words);
    drag(from, to, read<double>(words));
}

void ScreenTest::turnWheel(std::istream& words) {
    const auto point = read<CGPoint>(words);
    events().sendScroll(point, 0, read<double>(words), NSRunLoop::now());
}

void ScreenTest::pressKey(std::istream& words, bool shift) {
    using enum UIKeyCode;
    static const std::map<std::string, UIKeyCode> kKeys{
        {"Up", Up},         {"Down", Down},          {"Left", Left},   {"Right", Right},
        {"Enter", Enter},   {"Escape", Escape},      {"Space", Space}, {"Tab", Tab},
        {"Delete", Delete}, {"Menu", Menu},          {"Home", Home},   {"End", End},
        {"PageUp", PageUp}, {"Backspace", Backspace}};
    const auto key = kKeys.at(read<std::string>(words));
    const int times = words.eof() ? 1 : read<int>(words);
    for (int time = 0; time < times; ++time)
        press(key, shift);
}

std::shared_ptr<UIView> ScreenTest::find(UIAccessibilityRole role, const std::string& label) {
    Views found;
    collect(screen().shared_from_this(), role, found);
    std::erase_if(found,
                  [&](const auto& view) { return view->accessibilityElement().label != label; });
    return found.empty() ? nullptr : found.back();
}

CGRect ScreenTest::placeOfButton(const std::string& label) {
    layOut();
    const auto button = find(UIAccessibilityRole::Button, label);
    return button ? button->convertRectToView(button->bounds(), nullptr) : CGRect{};
}

std::vector<std::string> ScreenTest::labels(UIAccessibilityRole role, UIView& below) {
    Views found;
    collect(below.shared_from_this(), role, found);
    std::vector<std::string> texts;
    for (const auto& view : found)
        texts.push_back(view->accessibilityElement().label);
    return texts;
}

bool ScreenTest::tapAlertButton(const std::string& title) {
    settle();
    return alertCount() > 0 && tapElement(UIAccessibilityRole::Button, title);
}

std::string ScreenTest::alert() const {
    const std::string message = alertMessage();
    return message.empty() ? alertTitle() : alertTitle() + " | " + message;
}

std::string ScreenTest::alertTitle() const {
    const auto alerts = UIAlertView::visibleAlerts();
    return alerts.empty() ? "" : alerts.back()->title();
}

std::string ScreenTest::alertMessage() const {
    const auto alerts = UIAlertView::visibleAlerts();
    return alerts.empty() ? "" : alerts.back()->message();
}

int ScreenTest::alertCount() const {
    return static_cast<int>(UIAlertView::visibleAlerts().size());
}

}
