#pragma once
#include "platform/graphics/CGGeometry.h"

#include <memory>

namespace vistrel {
class UIView;
class UIViewController;

/// The modal screen of one presenter: slides it over everything, takes the covered screen's view
/// away while it cannot be seen, and slides it down again. A call that comes while it slides ends
/// the running slide first.
class UIModalPresentation : public std::enable_shared_from_this<UIModalPresentation> {
public:
    explicit UIModalPresentation(UIViewController& presenter);
    ~UIModalPresentation();

    void present(std::shared_ptr<UIViewController> modal, bool animated);
    void dismiss(bool animated);
    /// A slide is on its way.
    bool isMoving() const { return slide_ != nullptr; }

private:
    enum class Way { Up, Down };
    struct Slide;

    void placeModal(UIViewController& modal);
    void uncoverPresenter(const UIView& modalView);
    void begin(Way way, std::shared_ptr<UIViewController> modal, bool animated);
    void ignoreTouches(const std::shared_ptr<UIView>& view);
    void move(const std::shared_ptr<UIView>& modalView, Way way);
    void finish();
    void presented(const Slide& slide);
    void dismissed(const Slide& slide);

    UIViewController& presenter_;
    std::weak_ptr<UIView> stage_; ///< what holds presenter's and modal screen's view: the window
    CGRect presenterFrame_;
    std::unique_ptr<Slide> slide_;
    unsigned serial_ = 0; ///< of the running slide; an older one's end means nothing
};

}
