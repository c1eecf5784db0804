#include "platform/linux/window/CoveredPaints.h"

#include "platform/graphics/Bitmap.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

using Pixels = cairo_rectangle_int_t;

/// Far beyond any screen, and small enough for sums of two.
constexpr double kFar = 1 << 20;
constexpr Pixels kEverywhere{-(1 << 20), -(1 << 20), 1 << 21, 1 << 21};

int pixel(double value) {
    return static_cast<int>(std::clamp(value, -kFar, kFar));
}

Pixels between(double left, double top, double right, double bottom) {
    return {pixel(left), pixel(top), std::max(0, pixel(right) - pixel(left)),
            std::max(0, pixel(bottom) - pixel(top))};
}

/// Each pixel that the rectangle touches.
Pixels roundedOut(const CGRect& rect) {
    return between(std::floor(rect.minX()), std::floor(rect.minY()), std::ceil(rect.maxX()),
                   std::ceil(rect.maxY()));
}

/// Each pixel that lies in it whole.
Pixels roundedIn(const CGRect& rect) {
    return between(std::ceil(rect.minX()), std::ceil(rect.minY()), std::floor(rect.maxX()),
                   std::floor(rect.maxY()));
}

Pixels intersection(const Pixels& a, const Pixels& b) {
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    return {left, top, std::max(0, std::min(a.x + a.width, b.x + b.width) - left),
            std::max(0, std::min(a.y + a.height, b.y + b.height) - top)};
}

bool isEmpty(const Pixels& pixels) {
    return pixels.width == 0 || pixels.height == 0;
}

bool isUpright(const CGAffineTransform& transform) {
    return transform.b == 0 && transform.c == 0;
}

}

CoveredPaints::CoveredPaints(double pixelsPerUnit)
    : states_{{CGAffineTransformMakeScale(pixelsPerUnit, pixelsPerUnit), kEverywhere, kEverywhere,
               true}} {}

void CoveredPaints::pushTransform(const CGAffineTransform& transform) {
    State state = states_.back();
    state.toDevice = transform.concat(state.toDevice);
    states_.push_back(state);
}

void CoveredPaints::pushClip(const CGRect& rect) {
    State state = states_.back();
    const CGRect device = state.toDevice.apply(rect);
    state.clip = intersection(state.clip, roundedOut(device));
    state.full = intersection(state.full, roundedIn(device));
    state.isSolid = state.isSolid && isUpright(state.toDevice);
    states_.push_back(state);
}

void CoveredPaints::pushOpacity(double opacity) {
    State state = states_.back();
    state.isSolid = state.isSolid && opacity >= 1;
    states_.push_back(state);
}

void CoveredPaints::pop() {
    states_.pop_back();
}

void CoveredPaints::fillColor(const CGRect& rect, const UIColor& color) {
    add(rect, color.alpha >= 1);
}

void CoveredPaints::fillGradient(const CGRect& rect, const CGGradient& gradient) {
    add(rect, std::all_of(gradient.colors.begin(), gradient.colors.end(),
                          [](const UIColor& color) { return color.alpha >= 1; }));
}

void CoveredPaints::drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) {
    add(rect, picture && picture->isOpaque());
}

void CoveredPaints::add(const CGRect& rect, bool isOpaque) {
    const State& state = states_.back();
    const CGRect device = state.toDevice.apply(rect);
    Paint paint{intersection(state.clip, roundedOut(device)), {}};
    if (isOpaque && state.isSolid && isUpright(state.toDevice))
        paint.hidden = intersection(state.full, roundedIn(device));
    paints_.push_back(paint);
}

std::vector<bool> CoveredPaints::find() const {
    std::vector<bool> covered(paints_.size());
    cairo_region_t* hidden = cairo_region_create();
    for (std::size_t i = paints_.size(); i-- > 0;) {
        const Paint& paint = paints_[i];
        covered[i] =
            isEmpty(paint.touched) ||
            cairo_region_contains_rectangle(hidden, &paint.touched) == CAIRO_REGION_OVERLAP_IN;
        if (!covered[i] && !isEmpty(paint.hidden))
            cairo_region_union_rectangle(hidden, &paint.hidden);
    }
    cairo_region_destroy(hidden);
    return covered;
}

}
