#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIColor.h"
#include "platform/uikit/UIBarStyle.h"

#include <optional>

namespace vistrel {

/// The one hand that draws bars and their buttons. Everything goes into the current context.
namespace UIBarDrawing {

/// The colour a bar goes by: its tint, else its style's own.
UIColor barColor(const std::optional<UIColor>& tint, UIBarStyle style);
/// Between two colours, 0 is `from`.
UIColor mix(const UIColor& from, const UIColor& to, float amount);

/// The glossy bar over `rect`, its dark edge at the top or bottom.
enum class BarEdge { Top, Bottom };
void drawBar(const CGRect& rect, const UIColor& color, UIBarStyle style, BarEdge edge);

enum class ButtonShape { Rounded, Back };
/// The bordered body of a bar button.
void drawButton(const CGRect& rect, const UIColor& color, ButtonShape shape, bool pressed);
/// The body colour of a button that confirms.
UIColor doneColor();

/// A body with a glassy upper half, as alerts and sheets have; 30 to 50 points high.
void drawGlossyButton(const CGRect& rect, const UIColor& color, double radius, bool pressed);

}
}
