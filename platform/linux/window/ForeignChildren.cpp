#include "platform/linux/window/ForeignChildren.h"

#include "platform/linux/window/ForeignPlacement.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "platform/linux/window/GtkSceneVisitor.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

/// From units of the child widget to the screen widget.
CGAffineTransform childTransform(const ForeignPlacement::Place& place, double units) {
    CGAffineTransform transform = CGAffineTransformMakeScale(1 / units, 1 / units);
    transform = transform.concat(
        CGAffineTransformMakeTranslation(place.rect.origin.x, place.rect.origin.y));
    return transform.concat(place.toScreen);
}

}

ForeignChildren::~ForeignChildren() {
    clear();
}

void ForeignChildren::clear() {
    for (Child& child : children_)
        release(child);
    children_.clear();
}

void ForeignChildren::release(Child& child) {
    gtk_widget_unparent(child.widget);
    g_object_unref(child.widget);
}

ForeignChildren::Child* ForeignChildren::find(GtkWidget* widget) {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const Child& child) { return child.widget == widget; });
    return found == children_.end() ? nullptr : &*found;
}

bool ForeignChildren::update(const ForeignPlacement& placement, double pixelsPerPoint) {
    bool changed = false;
    for (Child& child : children_)
        child.isShown = false;
    for (const auto& place : placement.places()) {
        const double units = place.content->unitsPerPoint(pixelsPerPoint);
        const int width = static_cast<int>(std::lround(place.rect.size.width * units));
        const int height = static_cast<int>(std::lround(place.rect.size.height * units));
        const CGAffineTransform transform = childTransform(place, units);
        Child* child = find(place.widget);
        if (!child) {
            g_object_ref(place.widget);
            gtk_widget_set_parent(place.widget, screen_);
            child = &children_.emplace_back(Child{place.widget, 0, 0, {}, true});
        }
        changed |=
            child->width != width || child->height != height || child->transform != transform;
        child->width = width;
        child->height = height;
        child->transform = transform;
        child->isShown = true;
    }
    for (auto child = children_.begin(); child != children_.end();) {
        if (child->isShown) {
            ++child;
            continue;
        }
        release(*child);
        child = children_.erase(child);
        changed = true;
    }
    return changed;
}

void ForeignChildren::allocate() const {
    for (const Child& child : children_) {
        int minimum = 0;
        int natural = 0;
        // A widget must have been measured before it is allocated.
        gtk_widget_measure(child.widget, GTK_ORIENTATION_HORIZONTAL, -1, &minimum, &natural,
                           nullptr, nullptr);
        gtk_widget_allocate(child.widget, std::max(child.width, minimum), child.height, -1,
                            makeGskTransform(child.transform));
    }
}

bool ForeignChildren::hasFocus() const {
    return std::any_of(
        children_.begin(), children_.end(),
        [](const Child& child) {
            return (gtk_widget_get_state_flags(child.widget) & GTK_STATE_FLAG_FOCUS_WITHIN) != 0;
        });
}

}
