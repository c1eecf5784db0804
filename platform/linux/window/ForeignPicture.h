#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGGeometry.h"

#include <gtk/gtk.h>

#include <optional>

namespace vistrel {

/// Where a picture stands on whole device pixels of the screen, turned clockwise.
struct PixelPlace {
    int x = 0;
    int y = 0;
    int width = 0; ///< as it appears, after the turn
    int height = 0;
    int quarters = 0; ///< 0 to 3

    /// The place of a rectangle; nothing when it is mirrored, or turned by other than quarters.
    static std::optional<PixelPlace> of(const CGRect& rect, const CGAffineTransform& toPixels);
};

/// A moving picture that draws itself into the screen's snapshot. What nobody draws need not be
/// prepared: a covered or minimised picture is simply not drawn. Main loop only.
class ForeignPicture {
public:
    virtual ~ForeignPicture() = default;

    /// The screen that draws it, to be redrawn when there is a new frame. Not retained.
    virtual void setScreen(GtkWidget* screen) = 0;
    /// Draws the newest frame into a rectangle at the origin; the renderer scales and turns.
    virtual void draw(GtkSnapshot* snapshot, CGSize size) = 0;
    /// Draws the newest frame on exactly these pixels, in a snapshot of the whole screen whose
    /// units are `pixelsPerUnit` pixels. For the software renderer, which would spend a core on
    /// scaling.
    virtual void drawPixels(GtkSnapshot* snapshot, const PixelPlace& place,
                            double pixelsPerUnit) = 0;
};

}
