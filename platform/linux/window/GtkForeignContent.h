#pragma once
// NOLINTBEGIN(bugprone-reserved-identifier): the library's own names
using GtkWidget = struct _GtkWidget;
using GdkPaintable = struct _GdkPaintable;
// NOLINTEND(bugprone-reserved-identifier)

namespace vistrel {

/// What every foreign content of this host also is (a dynamic_cast finds it): a child widget or a
/// paintable, never both, that the GTK screen places.
///
/// The screen takes a reference of its own to a widget when the walk first meets it, makes it its
/// child, allocates it and snapshots it between its own nodes; when a walk no longer meets it, the
/// screen unparents it. The content object may die first: only the native object is kept.
/// A paintable is snapshotted into its rectangle; the screen draws again at "invalidate-contents".
class GtkForeignContent {
public:
    virtual ~GtkForeignContent() = default;
    /// Null when the content is a paintable.
    virtual GtkWidget* widget() { return nullptr; }
    /// Null when the content is a widget.
    virtual GdkPaintable* paintable() { return nullptr; }
    /// How many units of the widget stand for a point when the screen shows `pixelsPerPoint`. The
    /// screen allocates the frame's size times the answer and scales by its inverse. Content that
    /// can lay itself out at any size answers `pixelsPerPoint`, and stays crisp.
    virtual double unitsPerPoint(double /*pixelsPerPoint*/) { return 1; }
};

}
