#pragma once
#include "platform/uikit/UIModalOwner.h"
#include "platform/uikit/UIWindow.h"

#include <memory>

namespace vistrel {

/// The window of an alert or a sheet: lies over everything, dims what is below and takes all
/// touches and keys. It keeps its owner alive while it is on the screen, and gives keyboard and key
/// window back to who had them.
class UIModalWindow : public UIWindow {
public:
    /// Round: lit in the middle, for a box; Even: the same everywhere.
    enum class Dimming { Round, Even };

    UIModalWindow(Dimming dimming, std::shared_ptr<UIModalOwner> owner);

    const std::shared_ptr<UIModalOwner>& owner() const { return owner_; }
    /// Where the box or panel goes.
    UIView& stage() { return *stage_; }
    /// Onto the screen; `responder` gets the keys. A finger that is down loses what it touches.
    void appear(const std::shared_ptr<UIView>& responder);
    /// Hears no more; the keys go back to who had them.
    void resign();
    /// Off the screen; the owner is let go.
    void disappear();
    UIView& dimmer() { return *dimmer_; }

private:
    std::shared_ptr<UIModalOwner> owner_;
    std::shared_ptr<UIView> dimmer_;
    std::shared_ptr<UIView> stage_;
    std::weak_ptr<UIView> formerResponder_;
};

}
