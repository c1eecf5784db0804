#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/UIAccessibility.h"

#include <functional>
#include <optional>
#include <string>

namespace vistrel::TourHands {

/// A visitor's eyes and fingers: finds what is on the screen by role and name, as a screen reader
/// does, and touches it.
struct Sight {
    UIAccessibilityElement element;
    CGRect frame; ///< on the screen, points
};

/// The element with that role whose label is `label`, else the first whose label begins with it.
/// Only what is visible counts.
std::optional<Sight> find(UIAccessibilityRole role, const std::string& label);
/// The label of the first element of the role whose label contains `part`; empty for none.
std::string labelContaining(UIAccessibilityRole role, const std::string& part);
int count(UIAccessibilityRole role);

/// Touches the point briefly.
void tap(CGPoint point);
/// Taps the middle of what find() returns; false when there is nothing.
bool tap(UIAccessibilityRole role, const std::string& label);
/// A finger that moves in a straight line and lifts.
void drag(CGPoint from, CGPoint to, double seconds);

}
