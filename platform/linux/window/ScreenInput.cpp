#include "platform/linux/window/ScreenInput.h"

#include "platform/host/EventLoop.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/linux/window/KeyTranslation.h"
#include "platform/linux/window/ScreenWidget.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIView.h"

namespace vistrel {

namespace {

constexpr double kWheelStep = 50; ///< points for one notch

double now() {
    return host::current().loop->now();
}

UIEventDispatcher& events() {
    return UIApplication::sharedApplication().events();
}

}

ScreenInput::ScreenInput(ScreenWidget& screen)
    : screen_(screen)
    , drag_(screen.widget())
    , events_(gtk_event_controller_legacy_new())
    , keys_(gtk_event_controller_key_new())
    , textInput_(screen.widget(), keys_, [this](const UIKey& key) { sendKey(key); }) {
    // Before the children receive it: an alert may cover the page.
    gtk_event_controller_set_propagation_phase(events_, GTK_PHASE_CAPTURE);
    eventSeen_ = connectSignal<gboolean(GdkEvent*)>(
        events_, "event", [this](GdkEvent* event) { return handleEvent(event); });
    // Before a focused child: it stands for a view that gets its keys here.
    gtk_event_controller_set_propagation_phase(keys_, GTK_PHASE_CAPTURE);
    keyPressed_ = connectSignal<gboolean(guint, guint, GdkModifierType)>(
        keys_, "key-pressed",
        [this](guint value, guint, GdkModifierType state) { return handleKey(value, state); });
    screen_.setTextEntryHandler(
        [this](host::Display::TextEntry entry) { textInput_.follow(entry); });
    gtk_widget_add_controller(screen_.widget(), events_);
    gtk_widget_add_controller(screen_.widget(), keys_);
}

ScreenInput::~ScreenInput() {
    if (leaving_ != 0)
        host::current().loop->cancel(leaving_);
    screen_.setTextEntryHandler({});
    textInput_.follow(host::Display::TextEntry::None);
    gtk_widget_remove_controller(screen_.widget(), events_);
    gtk_widget_remove_controller(screen_.widget(), keys_);
}

bool ScreenInput::handleEvent(GdkEvent* event) {
    const GdkEventType type = gdk_event_get_event_type(event);
    switch (type) {
    case GDK_BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
        if (gdk_button_event_get_button(event) == GDK_BUTTON_SECONDARY)
            return type == GDK_BUTTON_PRESS && handleMenuRequest(event);
        return gdk_button_event_get_button(event) == GDK_BUTTON_PRIMARY &&
               handlePointer(event, type);
    case GDK_MOTION_NOTIFY:
    case GDK_TOUCH_BEGIN:
    case GDK_TOUCH_UPDATE:
    case GDK_TOUCH_END:
    case GDK_TOUCH_CANCEL:
        return handlePointer(event, type);
    case GDK_SCROLL:
        return handleScroll(event);
    default:
        return false;
    }
}

bool ScreenInput::handlePointer(GdkEvent* event, GdkEventType type) {
    pointer_ = screenPoint(event);
    const bool begins = type == GDK_BUTTON_PRESS || type == GDK_TOUCH_BEGIN;
    if (begins) {
        if (isDown_)
            return true;
        if (events().touchBeginsInForeignContent(pointer_, now()))
            return false;
        isDown_ = true;
        sequence_ = gdk_event_get_event_sequence(event);
        takeFocus();
        events().sendTouch(UITouchPhase::Began, pointer_, now());
        return true;
    }
    if (!isDown_ || gdk_event_get_event_sequence(event) != sequence_)
        return false;
    if (type == GDK_MOTION_NOTIFY || type == GDK_TOUCH_UPDATE) {
        if (type == GDK_MOTION_NOTIFY && leavesWithFile(event))
            isDown_ = false;
        else
            events().sendTouch(UITouchPhase::Moved, pointer_, now());
        return true;
    }
    isDown_ = false;
    events().sendTouch(type == GDK_TOUCH_CANCEL ? UITouchPhase::Cancelled : UITouchPhase::Ended,
                       pointer_, now());
    return true;
}

bool ScreenInput::leavesWithFile(GdkEvent* event) {
    GdkDevice* device = gdk_event_get_device(event);
    const GdkInputSource source = gdk_device_get_source(device);
    GdkSurface* surface = gdk_event_get_surface(event);
    double x = 0;
    double y = 0;
    if ((source != GDK_SOURCE_MOUSE && source != GDK_SOURCE_TOUCHPAD &&
         source != GDK_SOURCE_TRACKPOINT) ||
        !gdk_event_get_position(event, &x, &y))
        return false;
    const bool isInside = x >= 0 && y >= 0 && x < gdk_surface_get_width(surface) &&
                          y < gdk_surface_get_height(surface);
    const auto file = isInside ? std::nullopt : events().dragFileOut();
    if (file)
        drag_.begin(device, host::current().files->machinePath(*file));
    return file.has_value();
}

bool ScreenInput::handleMenuRequest(GdkEvent* event) {
    const CGPoint point = screenPoint(event);
    // A page has its own menu.
    return !isOverForeignContent(point) && events().sendMenuRequest(point);
}

bool ScreenInput::handleScroll(GdkEvent* event) {
    if (isOverForeignContent(pointer_))
        return false;
    double dx = 0;
    double dy = 0;
    switch (gdk_scroll_event_get_direction(event)) {
    case GDK_SCROLL_UP:
        dy = -1;
        break;
    case GDK_SCROLL_DOWN:
        dy = 1;
        break;
    case GDK_SCROLL_LEFT:
        dx = -1;
        break;
    case GDK_SCROLL_RIGHT:
        dx = 1;
        break;
    case GDK_SCROLL_SMOOTH:
        gdk_scroll_event_get_deltas(event, &dx, &dy);
        break;
    }
    events().sendScroll(pointer_, dx * kWheelStep, dy * kWheelStep, now());
    return true;
}

bool ScreenInput::handleKey(guint value, GdkModifierType state) {
    const UIKey key = keyFromGdk(value, state);
    // A page gets every key that is not a shortcut.
    const guint32 time = gtk_event_controller_get_current_event_time(keys_);
    // A page returns the Tab with which it gave the focus up.
    if (key.code == UIKeyCode::Tab && time != 0 && time == pageKeyTime_ && !screen_.pageHasFocus())
        return true;
    if (screen_.pageHasFocus() && !commandForKey(key)) {
        pageKeyTime_ = time;
        goesBackward_ = key.shift;
        return false;
    }
    const auto responder = events().firstResponder();
    if (textInput_.useClipboard(key, responder ? responder->selectedText() : std::string()))
        return true;
    return sendKey(key);
}

bool ScreenInput::sendKey(const UIKey& key) {
    const auto before = events().firstResponder();
    const bool used = events().sendKey(key);
    if (events().firstResponder() != before)
        screen_.followFocus(key.shift ? GTK_DIR_TAB_BACKWARD : GTK_DIR_TAB_FORWARD);
    return used;
}

void ScreenInput::focusMoved(GtkWidget* focused) {
    GtkWidget* page = screen_.focusedPage();
    // A page that has no further link moves the focus to a helper widget inside it. Menus do not
    // count.
    const bool isHelper =
        focused && page && gtk_widget_get_parent(focused) == page && !GTK_IS_NATIVE(focused);
    if (leaving_ != 0 || (focused && !isHelper))
        return;
    // The toolkit is still moving it.
    leaving_ = host::current().loop->schedule(0, [this, page] {
        leaving_ = 0;
        if (page && screen_.focusedPage() == page)
            events().moveFocus(goesBackward_);
        screen_.followFocus(goesBackward_ ? GTK_DIR_TAB_BACKWARD : GTK_DIR_TAB_FORWARD);
    });
}

CGPoint ScreenInput::screenPoint(GdkEvent* event) const {
    double x = 0;
    double y = 0;
    if (!gdk_event_get_position(event, &x, &y))
        return pointer_;
    GtkWidget* widget = screen_.widget();
    GtkNative* native = gtk_widget_get_native(widget);
    double surfaceX = 0;
    double surfaceY = 0;
    gtk_native_get_surface_transform(native, &surfaceX, &surfaceY);
    const graphene_point_t onWindow{static_cast<float>(x - surfaceX),
                                    static_cast<float>(y - surfaceY)};
    graphene_point_t local = onWindow;
    if (!gtk_widget_compute_point(GTK_WIDGET(native), widget, &onWindow, &local))
        return pointer_;
    return screen_.screenTransform().inverted().apply(CGPoint{local.x, local.y});
}

bool ScreenInput::isOverForeignContent(CGPoint point) const {
    const auto hit = UIApplication::sharedApplication().screenView().hitTest(point);
    return hit && hit->foreignContent();
}

void ScreenInput::takeFocus() {
    gtk_widget_grab_focus(screen_.widget());
}

}
