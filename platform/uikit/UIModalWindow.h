#pragma once
#include "platform/uikit/UIWindow.h"

#include <memory>

namespace vistrel {
class UIModalQuestion;

/// The window of an alert or a sheet: lies over everything, dims what is below and takes all
/// touches and keys. It keeps its question alive while it is on the screen, and returns the
/// keyboard and the key window to their former holders.
class UIModalWindow : public UIWindow {
public:
    /// Round: lit in the middle, for a box; Even: the same everywhere.
    enum class Dimming { Round, Even };

    UIModalWindow(Dimming dimming, std::shared_ptr<UIModalQuestion> question);

    /// Null once the window has disappeared.
    const std::shared_ptr<UIModalQuestion>& question() const { return question_; }
    /// Where the box or panel goes.
    UIView& stage() { return *stage_; }
    /// Goes on the screen; `responder` gets the keys. The current touch is cancelled.
    void appear(const std::shared_ptr<UIView>& responder);
    /// Takes no more input; the keys go back to their former responder.
    void resign();
    /// Leaves the screen and releases the question.
    void disappear();
    UIView& dimmer() { return *dimmer_; }

private:
    std::shared_ptr<UIModalQuestion> question_;
    std::shared_ptr<UIView> dimmer_;
    std::shared_ptr<UIView> stage_;
    std::weak_ptr<UIView> formerResponder_;
};

}
