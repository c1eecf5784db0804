#include "platform/linux/window/CairoPainter.h"

namespace vistrel {

namespace {

void addRectangle(cairo_t* cairo, const CGRect& rect) {
    cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

}

CairoPainter::CairoPainter(cairo_t* cairo, PictureNodes& pictures)
    : cairo_(cairo)
    , pictures_(pictures) {}

CairoPainter::~CairoPainter() {
    cairo_destroy(cairo_);
}

void CairoPainter::pushTransform(const CGAffineTransform& transform) {
    cairo_save(cairo_);
    const cairo_matrix_t matrix{transform.a, transform.b,  transform.c,
                                transform.d, transform.tx, transform.ty};
    cairo_transform(cairo_, &matrix);
    opacities_.push_back(1);
}

void CairoPainter::pushClip(const CGRect& rect) {
    cairo_save(cairo_);
    addRectangle(cairo_, rect);
    cairo_clip(cairo_);
    opacities_.push_back(1);
}

void CairoPainter::pushOpacity(double opacity) {
    cairo_save(cairo_);
    if (opacity < 1)
        cairo_push_group(cairo_);
    opacities_.push_back(opacity);
}

void CairoPainter::pop() {
    if (opacities_.back() < 1) {
        cairo_pop_group_to_source(cairo_);
        cairo_paint_with_alpha(cairo_, opacities_.back());
    }
    opacities_.pop_back();
    cairo_restore(cairo_);
}

void CairoPainter::fillColor(const CGRect& rect, const UIColor& color) {
    cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha);
    addRectangle(cairo_, rect);
    cairo_fill(cairo_);
}

void CairoPainter::fillGradient(const CGRect& rect, const CGGradient& gradient) {
    cairo_pattern_t* pattern = cairo_pattern_create_linear(0, rect.minY(), 0, rect.maxY());
    addColourStops(pattern, gradient);
    cairo_set_source(cairo_, pattern);
    cairo_pattern_destroy(pattern);
    addRectangle(cairo_, rect);
    cairo_fill(cairo_);
}

void CairoPainter::drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) {
    if (picture && !rect.isEmpty())
        paintPicture(cairo_, pictures_.pixelsOf(picture), rect);
}

}
