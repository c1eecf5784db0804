#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/uikit/CADisplayLink.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewAnimation.h"
#include "platform/uikit/UIViewAnimationBlock.h"

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace vistrel {

/// Runs the animation blocks. Where a view is shown is computed from the clock on demand; frames
/// are requested only while something on the screen moves, and a block's end comes from the run
/// loop, so that animations also end without a display. Main thread only.
class UIViewAnimationEngine {
public:
    static UIViewAnimationEngine& shared();
    /// Drops everything without calling anybody.
    void reset();

    void begin();
    void commit();
    /// The innermost block that is open; null for none.
    UIViewAnimationBlock* openBlock() const;
    void addTransition(UIViewAnimationTransition transition, UIView& view);
    void disable() { ++disabled_; }
    void enable() { --disabled_; }

    /// From the view, after its state has changed from `old` to `now`.
    void stateDidChange(UIView& view, const ViewState& old, const ViewState& now);
    /// The view and all under it leave the tree: their animations are cut.
    void endAnimationsUnder(const UIView& view);
    void forget(const UIView& view);
    /// Where the view is shown now, between its old state and its new; null when it does not move.
    /// Valid until an animation begins or ends.
    const ViewState* shownState(const UIView& view);
    bool isMoving(const UIView& view) const { return !tracks_.empty() && tracks_.contains(&view); }

    /// A view in the middle of a flip, as the walk draws it.
    struct Flip {
        double progress = 0; ///< 0 to 1, eased
        bool fromLeft = true;
        std::shared_ptr<const Bitmap> before;
        std::shared_ptr<const Bitmap> after; ///< null until it is first needed
        std::shared_ptr<Bitmap> turned;      ///< the visible side, repainted each frame
    };
    /// As it is now; null when the view does not flip. Valid until an animation begins or ends.
    Flip* flipOf(const UIView& view);
    bool isFlipping(const UIView& view) const {
        return !transitions_.empty() && transitions_.contains(&view);
    }
    /// Called by the walk: something moving was drawn, so another frame is needed.
    void movingViewWasDrawn();

private:
    static constexpr std::size_t kProperties = 5;
    using Block = std::shared_ptr<UIViewAnimationBlock>;
    struct Track {
        Block block; ///< null: this property stands still
        ViewState from;
    };
    struct Tracks {
        UIView* view = nullptr;
        ViewState to;
        ViewState shown; ///< as it was last computed
        std::array<Track, kProperties> properties;
    };
    struct Transition {
        UIView* view = nullptr;
        Block block;
        Flip flip;
    };

    UIViewAnimationEngine();
    static ViewState shownOnTheWay(const Tracks& tracks);
    void cut(Block& block);
    void cutView(const UIView& view);
    void endSoon(const Block& block);
    void endDue();
    void release(const Block& block);
    void scheduleWake();

    std::vector<Block> open_;
    std::vector<Block> running_; ///< in the order of their commits
    std::unordered_map<const UIView*, Tracks> tracks_;
    std::unordered_map<const UIView*, Transition> transitions_;
    int disabled_ = 0;
    std::uint64_t wakeToken_ = 0;
    bool drewMovement_ = false;
    CADisplayLink frames_;
};

}
