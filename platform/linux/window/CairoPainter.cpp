#include "platform/linux/window/CairoPainter.h"

namespace vistrel {

CairoPainter::CairoPainter(cairo_t* cairo, PictureNodes& pictures)
    : cairo_(cairo)
    , pictures_(pictures)
    , states_(1) {}

CairoPainter::~CairoPainter() {
    cairo_destroy(cairo_);
}

CairoPainter::State& CairoPainter::push() {
    return states_.emplace_back(State{states_.back().toPart});
}

void CairoPainter::pushTransform(const CGAffineTransform& transform) {
    State& state = push();
    state.toPart = transform.concat(state.toPart);
}

void CairoPainter::pushClip(const CGRect& rect) {
    push().isSaved = true;
    cairo_save(cairo_);
    addRectangle(rect);
    cairo_clip(cairo_);
}

void CairoPainter::pushOpacity(double opacity) {
    State& state = push();
    if (opacity >= 1)
        return;
    state.isSaved = true;
    state.opacity = opacity;
    cairo_save(cairo_);
    cairo_push_group(cairo_);
}

void CairoPainter::pop() {
    const State& state = states_.back();
    if (state.opacity < 1) {
        cairo_pop_group_to_source(cairo_);
        cairo_paint_with_alpha(cairo_, state.opacity);
    }
    if (state.isSaved)
        cairo_restore(cairo_);
    states_.pop_back();
}

void CairoPainter::addRectangle(const CGRect& rect) {
    const CGAffineTransform& toPart = states_.back().toPart;
    if (toPart.b == 0 && toPart.c == 0) {
        const CGRect place = toPart.apply(rect);
        cairo_rectangle(cairo_, place.origin.x, place.origin.y, place.size.width,
                        place.size.height);
        return;
    }
    const CGPoint corners[] = {{rect.minX(), rect.minY()},
                               {rect.maxX(), rect.minY()},
                               {rect.maxX(), rect.maxY()},
                               {rect.minX(), rect.maxY()}};
    for (const CGPoint& corner : corners) {
        const CGPoint place = toPart.apply(corner);
        cairo_line_to(cairo_, place.x, place.y);
    }
    cairo_close_path(cairo_);
}

void CairoPainter::fillColor(const CGRect& rect, const UIColor& color) {
    cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha);
    addRectangle(rect);
    cairo_fill(cairo_);
}

void CairoPainter::drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) {
    if (!picture || rect.isEmpty())
        return;
    cairo_pattern_t* pixels = pictures_.pixelsOf(picture);
    setPixelsAsSource(cairo_, pixels, rect, states_.back().toPart);
    addRectangle(rect);
    cairo_fill(cairo_);
}

}
