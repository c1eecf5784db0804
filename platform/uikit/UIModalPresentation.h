#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIScreenTransition.h"

#include <memory>

namespace vistrel {
class UIView;
class UIViewController;

/// The modal screen of one presenter: slides it over everything, removes the covered screen's view
/// while it cannot be seen, and slides it down again. A call during a slide finishes that slide
/// first.
class UIModalPresentation {
public:
    explicit UIModalPresentation(UIViewController& presenter);
    ~UIModalPresentation();

    void present(const std::shared_ptr<UIViewController>& modal, bool animated);
    void dismiss(bool animated);
    /// Null when nothing is presented, or while it slides down.
    const std::shared_ptr<UIViewController>& modal() const { return modal_; }
    /// Whether a slide is in progress.
    bool isMoving() const { return transition_.isRunning(); }

private:
    enum class Way { Up, Down };

    void placeModal(UIViewController& modal);
    void uncoverPresenter(const UIView& modalView);
    void begin(Way way, const std::shared_ptr<UIViewController>& modal, bool animated);
    void presented(UIViewController& modal, bool animated);
    void dismissed(UIViewController& modal, bool animated);

    UIViewController& presenter_;
    std::shared_ptr<UIViewController> modal_;
    std::weak_ptr<UIView> stage_; ///< what holds presenter's and modal screen's view: the window
    CGRect presenterFrame_;
    UIScreenTransition transition_;
};

}
