#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIColor.h"
#include "platform/uikit/UIBarStyle.h"

#include <optional>

namespace vistrel {

/// Shared drawing for bars and their buttons, into the current context.
namespace UIBarDrawing {

/// The base colour of a bar: its tint, else the default of its style.
UIColor barColor(const std::optional<UIColor>& tint, UIBarStyle style);
/// Between two colours, 0 is `from`.
UIColor mix(const UIColor& from, const UIColor& to, float amount);

/// The glossy bar over `rect`, its dark edge at the top or bottom.
enum class BarEdge { Top, Bottom };
void drawBar(const CGRect& rect, const UIColor& color, UIBarStyle style, BarEdge edge);

enum class ButtonShape { Rounded, Back };
/// The bordered body of a bar button.
void drawButton(const CGRect& rect, const UIColor& color, ButtonShape shape, bool pressed);
/// The body colour of a confirming button.
UIColor doneColor();

/// A body with a glassy upper half, for alerts and sheets; 30 to 50 points tall.
void drawGlossyButton(const CGRect& rect, const UIColor& color, double radius, bool pressed);

}
}
