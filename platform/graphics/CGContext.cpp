#include "platform/graphics/CGContext.h"

#include "platform/graphics/Bitmap.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>

namespace vistrel {

CGContext::CGContext(std::shared_ptr<Bitmap> bitmap, double scale)
    : bitmap_(std::move(bitmap))
    , pixelsPerPoint_(scale) {
    auto* surface =
        cairo_image_surface_create_for_data(bitmap_->data(), CAIRO_FORMAT_ARGB32, bitmap_->width(),
                                            bitmap_->height(), bitmap_->stride());
    cairo_ = cairo_create(surface);
    cairo_surface_destroy(surface);
    cairo_scale(cairo_, scale, scale);
    cairo_set_line_width(cairo_, 1);
}

CGContext::~CGContext() {
    cairo_surface_flush(cairo_get_target(cairo_));
    cairo_destroy(cairo_);
    bitmap_->contentChanged();
}

void CGContext::saveGState() {
    cairo_save(cairo_);
    states_.push_back(state_);
}

void CGContext::restoreGState() {
    if (states_.empty())
        return;
    cairo_restore(cairo_);
    state_ = states_.back();
    states_.pop_back();
}

void CGContext::translate(double tx, double ty) {
    cairo_translate(cairo_, tx, ty);
}

void CGContext::scale(double sx, double sy) {
    cairo_scale(cairo_, sx, sy);
}

void CGContext::rotate(double radians) {
    cairo_rotate(cairo_, radians);
}

void CGContext::concat(const CGAffineTransform& transform) {
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, transform.a, transform.b, transform.c, transform.d, transform.tx,
                      transform.ty);
    cairo_transform(cairo_, &matrix);
}

void CGContext::setFillColor(const UIColor& color) {
    state_.fillColor = color;
}

void CGContext::setStrokeColor(const UIColor& color) {
    state_.strokeColor = color;
}

void CGContext::setLineWidth(double width) {
    cairo_set_line_width(cairo_, width);
}

void CGContext::setAlpha(float alpha) {
    state_.alpha = alpha;
}

void CGContext::setSource(const UIColor& color) {
    cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha * state_.alpha);
}

void CGContext::fillRect(const CGRect& rect) {
    cairo_save(cairo_);
    if (state_.fillColor.alpha == 0)
        cairo_set_operator(cairo_, CAIRO_OPERATOR_CLEAR);
    setSource(state_.fillColor);
    cairo_new_path(cairo_);
    cairo_rectangle(cairo_, rect.minX(), rect.minY(), rect.size.width, rect.size.height);
    cairo_fill(cairo_);
    cairo_restore(cairo_);
}

void CGContext::fillEllipse(const CGRect& rect) {
    if (rect.isEmpty())
        return;
    cairo_save(cairo_);
    cairo_new_path(cairo_);
    cairo_translate(cairo_, rect.midX(), rect.midY());
    cairo_scale(cairo_, rect.size.width / 2, rect.size.height / 2);
    cairo_arc(cairo_, 0, 0, 1, 0, 2 * M_PI);
    cairo_restore(cairo_);
    setSource(state_.fillColor);
    cairo_fill(cairo_);
}

void CGContext::beginPath() {
    cairo_new_path(cairo_);
}

void CGContext::moveTo(double x, double y) {
    cairo_move_to(cairo_, x, y);
}

void CGContext::lineTo(double x, double y) {
    cairo_line_to(cairo_, x, y);
}

void CGContext::curveTo(double c1x, double c1y, double c2x, double c2y, double x, double y) {
    cairo_curve_to(cairo_, c1x, c1y, c2x, c2y, x, y);
}

void CGContext::arc(double x, double y, double radius, double startAngle, double endAngle) {
    cairo_arc(cairo_, x, y, radius, startAngle, endAngle);
}

void CGContext::closePath() {
    cairo_close_path(cairo_);
}

void CGContext::addRoundedRect(const CGRect& rect, double radius) {
    const double r = std::min({radius, rect.size.width / 2, rect.size.height / 2});
    cairo_new_sub_path(cairo_);
    cairo_arc(cairo_, rect.maxX() - r, rect.minY() + r, r, -M_PI / 2, 0);
    cairo_arc(cairo_, rect.maxX() - r, rect.maxY() - r, r, 0, M_PI / 2);
    cairo_arc(cairo_, rect.minX() + r, rect.maxY() - r, r, M_PI / 2, M_PI);
    cairo_arc(cairo_, rect.minX() + r, rect.minY() + r, r, M_PI, 3 * M_PI / 2);
    cairo_close_path(cairo_);
}

void CGContext::fillPath() {
    setSource(state_.fillColor);
    cairo_fill(cairo_);
}

void CGContext::strokePath() {
    setSource(state_.strokeColor);
    cairo_stroke(cairo_);
}

void CGContext::clipToPath() {
    cairo_clip(cairo_);
}

double CGGradient::place(std::size_t colour) const {
    if (colour < locations.size())
        return locations[colour];
    return colors.size() > 1 ? static_cast<double>(colour) / static_cast<double>(colors.size() - 1)
                             : 0.0;
}

void CGContext::clipToRect(const CGRect& rect) {
    cairo_new_path(cairo_);
    cairo_rectangle(cairo_, rect.minX(), rect.minY(), rect.size.width, rect.size.height);
    cairo_clip(cairo_);
}

void CGContext::paintGradient(_cairo_pattern* pattern, const CGGradient& gradient) {
    for (std::size_t i = 0; i < gradient.colors.size(); ++i) {
        const auto& color = gradient.colors[i];
        cairo_pattern_add_color_stop_rgba(pattern, gradient.place(i), color.red, color.green,
                                          color.blue, color.alpha);
    }
    cairo_set_source(cairo_, pattern);
    cairo_pattern_destroy(pattern);
    cairo_paint_with_alpha(cairo_, state_.alpha);
}

void CGContext::drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end) {
    paintGradient(cairo_pattern_create_linear(start.x, start.y, end.x, end.y), gradient);
}

void CGContext::drawRadialGradient(const CGGradient& gradient, CGPoint center, double radius) {
    paintGradient(cairo_pattern_create_radial(center.x, center.y, 0, center.x, center.y, radius),
                  gradient);
}

void CGContext::beginTransparencyLayer(double alpha) {
    layerAlphas_.push_back(alpha);
    cairo_push_group(cairo_);
}

void CGContext::endTransparencyLayer() {
    if (layerAlphas_.empty())
        return;
    cairo_pop_group_to_source(cairo_);
    cairo_paint_with_alpha(cairo_, layerAlphas_.back());
    layerAlphas_.pop_back();
}

void CGContext::drawBitmap(const Bitmap& bitmap, const CGRect& rect) {
    drawBitmapPart(bitmap, CGRectMake(0, 0, static_cast<double>(bitmap.width()), bitmap.height()),
                   rect);
}

void CGContext::drawBitmapPart(const Bitmap& bitmap, const CGRect& source, const CGRect& rect) {
    const auto whole = CGRectMake(0, 0, bitmap.width(), bitmap.height());
    const auto part = CGRectIntersection(source, whole);
    const int left = static_cast<int>(std::floor(part.minX()));
    const int top = static_cast<int>(std::floor(part.minY()));
    const int width = static_cast<int>(std::ceil(part.maxX())) - left;
    const int height = static_cast<int>(std::ceil(part.maxY())) - top;
    if (width <= 0 || height <= 0 || rect.isEmpty())
        return;
    // The surface is only read. Its edge is the part's edge, so no neighbouring pixel bleeds in.
    auto* start = const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(
        bitmap.row(top) + left)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    auto* surface = cairo_image_surface_create_for_data(start, CAIRO_FORMAT_ARGB32, width, height,
                                                        bitmap.stride());
    auto* pattern = cairo_pattern_create_for_surface(surface);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
    cairo_matrix_t matrix;
    cairo_matrix_init_scale(&matrix, width / rect.size.width, height / rect.size.height);
    cairo_matrix_translate(&matrix, -rect.minX(), -rect.minY());
    cairo_pattern_set_matrix(pattern, &matrix);
    cairo_save(cairo_);
    cairo_new_path(cairo_);
    cairo_rectangle(cairo_, rect.minX(), rect.minY(), rect.size.width, rect.size.height);
    cairo_set_source(cairo_, pattern);
    if (state_.alpha == 1) {
        cairo_fill(cairo_);
    } else {
        cairo_clip(cairo_);
        cairo_paint_with_alpha(cairo_, state_.alpha);
    }
    cairo_restore(cairo_);
    cairo_pattern_destroy(pattern);
    cairo_surface_destroy(surface);
}

}
