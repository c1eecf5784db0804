#pragma once
// NOLINTBEGIN(bugprone-reserved-identifier): the library's own names
using GtkWidget = struct _GtkWidget;
// NOLINTEND(bugprone-reserved-identifier)

namespace vistrel {
class ForeignPicture;

/// What all foreign content of this host is as well (a dynamic_cast finds it): a child widget or a
/// moving picture, never both, that the GTK screen places.
///
/// The screen retains a widget when the walk first meets it, makes it its child, allocates it and
/// snapshots it between its own nodes; when a walk no longer meets it, the screen unparents it. The
/// content object may die first: only the native object is kept.
class GtkForeignContent {
public:
    virtual ~GtkForeignContent() = default;
    /// Null when the content is a moving picture.
    virtual GtkWidget* widget() { return nullptr; }
    /// Null when the content is a widget.
    virtual ForeignPicture* picture() { return nullptr; }
    /// Whether it paints every pixel of its place, so that nothing behind it is seen.
    virtual bool isOpaque() const { return false; }
    /// The widget's units per point when the screen shows `pixelsPerPoint`. The screen allocates
    /// the frame's size times the result and scales by its inverse. Content that can lay itself out
    /// at any size returns `pixelsPerPoint`, and stays crisp.
    virtual double unitsPerPoint(double /*pixelsPerPoint*/) { return 1; }
};

}
