#pragma once
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIStringDrawing.h"

#include <string>

// Pango's name.
struct _PangoLayout; // NOLINT(bugprone-reserved-identifier)

namespace vistrel {

/// The text shaping behind fonts and string drawing, in points and independent of the scale at
/// which it is drawn. Recently used layouts are cached, so that the same text costs nothing
/// the second time.
namespace TextLayout {

struct Metrics {
    double ascender = 0;
    double descender = 0;
};
Metrics metricsOfFont(const UIFont& font);

/// A layout of the text broken or cut to `width` (negative: one line of any length). Borrowed:
/// valid until the next call.
_PangoLayout* layoutFor(const std::string& text, const UIFont& font, double width,
                        UILineBreakMode mode);

}
}
