#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/window/FileDrag.h"
#include "platform/linux/window/TextInput.h"

#include <gtk/gtk.h>

namespace vistrel {
class ScreenWidget;

/// Passes touches, mouse, wheel and keyboard events of the screen widget to the application, except
/// events over uncovered foreign content, which go to that content.
class ScreenInput {
public:
    explicit ScreenInput(ScreenWidget& screen);
    ~ScreenInput();
    ScreenInput(const ScreenInput&) = delete;
    ScreenInput& operator=(const ScreenInput&) = delete;

    /// The toolkit's focus is on that widget now, or on none. A page gives it up after its last
    /// link, or before its first one.
    void focusMoved(GtkWidget* focused);

private:
    bool handleEvent(GdkEvent* event);
    bool handlePointer(GdkEvent* event, GdkEventType type);
    bool leavesWithFile(GdkEvent* event);
    bool handleMenuRequest(GdkEvent* event);
    bool handleScroll(GdkEvent* event);
    bool handleKey(guint value, GdkModifierType state);
    bool sendKey(const UIKey& key);
    CGPoint screenPoint(GdkEvent* event) const;
    bool isOverForeignContent(CGPoint point) const;
    void takeFocus();

    ScreenWidget& screen_;
    FileDrag drag_;
    GtkEventController* events_;
    GtkEventController* keys_;
    TextInput textInput_;
    SignalConnection eventSeen_;
    SignalConnection keyPressed_;
    GdkEventSequence* sequence_ = nullptr;
    CGPoint pointer_;
    bool isDown_ = false;
    std::uint64_t leaving_ = 0;
    guint32 pageKeyTime_ = 0;   ///< of the last key that a page got
    bool goesBackward_ = false; ///< the last Tab that a page got
};

}
