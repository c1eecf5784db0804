#pragma once
#include <functional>

namespace vistrel {
class UIView;

enum class UIViewAnimationCurve { EaseInOut = 0, EaseIn = 1, EaseOut = 2, Linear = 3 };
enum class UIViewAnimationTransition { None = 0, FlipFromLeft = 1, FlipFromRight = 2 };

/// Animation blocks: changes of frame, bounds, centre, transform, alpha and background colour made
/// between begin and commit are shown over the block's duration. Blocks nest. Getters return the
/// final values immediately. Blocks also run without a window, by the run loop's clock.
namespace UIViewAnimation {

void beginAnimations();
void setAnimationDuration(double seconds);          ///< default 0.2
void setAnimationCurve(UIViewAnimationCurve curve); ///< default EaseInOut
/// The view flips from its old to its new content; None: no effect. The old content is a picture
/// taken now, the new one when it first turns into view, whatever `cache` is.
void setAnimationTransitionForView(UIViewAnimationTransition transition, UIView& view, bool cache);
/// Runs once on the main loop when the block's animations have ended; `finished` false when they
/// were cut short.
void setAnimationDidStop(std::function<void(bool finished)> didStop);
void commitAnimations();

/// Changes made inside are never animated, whatever block is open.
void withoutAnimation(const std::function<void()>& changes);

}
}
