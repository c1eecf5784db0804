#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewAnimation.h"

namespace vistrel {

/// The progress of an animation after the fraction `time` (0 to 1) of its duration.
double easedProgress(UIViewAnimationCurve curve, double time);

double interpolate(double from, double to, double progress);
CGPoint interpolate(CGPoint from, CGPoint to, double progress);
CGRect interpolate(const CGRect& from, const CGRect& to, double progress);
/// A clear colour takes the hue of the other one.
UIColor interpolate(const UIColor& from, const UIColor& to, double progress);
/// Rotates and scales instead of collapsing halfway.
CGAffineTransform interpolate(const CGAffineTransform& from, const CGAffineTransform& to,
                              double progress);

}
