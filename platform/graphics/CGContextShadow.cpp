#include "platform/graphics/CGContext.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

namespace vistrel {

namespace {

/// One pass of a running mean of width 2r+1 along a line of `count` bytes, `step` apart.
void blurLine(unsigned char* line, int count, std::ptrdiff_t step, int r,
              std::vector<unsigned char>& copy) {
    for (int i = 0; i < count; ++i) {
        copy[static_cast<std::size_t>(i)] = line[i * step];
    }
    const auto at = [&](int i) {
        return i < 0 || i >= count ? 0 : static_cast<int>(copy[static_cast<std::size_t>(i)]);
    };
    int sum = 0;
    for (int i = -r; i <= r; ++i) {
        sum += at(i);
    }
    for (int i = 0; i < count; ++i) {
        line[i * step] = static_cast<unsigned char>(sum / (2 * r + 1));
        sum += at(i + r + 1) - at(i - r);
    }
}

/// Three running means come close to a Gaussian of that radius.
void blur(cairo_surface_t* mask, int radius) {
    const int width = cairo_image_surface_get_width(mask);
    const int height = cairo_image_surface_get_height(mask);
    const int stride = cairo_image_surface_get_stride(mask);
    cairo_surface_flush(mask);
    auto* data = cairo_image_surface_get_data(mask);
    std::vector<unsigned char> copy(static_cast<std::size_t>(std::max(width, height)));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y) {
            blurLine(data + static_cast<std::ptrdiff_t>(y) * stride, width, 1, radius, copy);
        }
        for (int x = 0; x < width; ++x) {
            blurLine(data + x, height, stride, radius, copy);
        }
    }
    cairo_surface_mark_dirty(mask);
}

}

void CGContext::drawShaded(const std::function<void()>& drawing) {
    if (state_.shadow.color.alpha <= 0) {
        drawing();
        return;
    }
    const Shadow shadow = state_.shadow;
    state_.shadow.color = UIColor::clearColor();
    auto* path = cairo_copy_path(cairo_);
    cairo_push_group(cairo_);
    cairo_new_path(cairo_);
    cairo_append_path(cairo_, path);
    cairo_path_destroy(path);
    drawing();
    auto* shape = cairo_pop_group(cairo_);
    state_.shadow = shadow;
    cairo_new_path(cairo_);
    paintShadow(shape);
    cairo_set_source(cairo_, shape);
    cairo_paint(cairo_);
    cairo_pattern_destroy(shape);
}

void CGContext::paintShadow(_cairo_pattern* shape) {
    const auto& shadow = state_.shadow;
    cairo_save(cairo_);
    const auto& color = shadow.color;
    cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha);
    const int radius = static_cast<int>(std::lround(shadow.blur * pixelsPerPoint_ / 4));
    if (radius == 0) {
        cairo_translate(cairo_, shadow.dx, shadow.dy);
        cairo_mask(cairo_, shape);
        cairo_restore(cairo_);
        return;
    }
    // The blurred mask is made in device pixels, as large as what can be seen.
    cairo_matrix_t toDevice;
    cairo_get_matrix(cairo_, &toDevice);
    cairo_identity_matrix(cairo_);
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(cairo_, &left, &top, &right, &bottom);
    const int margin = 3 * radius;
    const int width = static_cast<int>(std::ceil(right - left)) + 2 * margin;
    const int height = static_cast<int>(std::ceil(bottom - top)) + 2 * margin;
    auto* mask = cairo_image_surface_create(CAIRO_FORMAT_A8, width, height);
    auto* maskCairo = cairo_create(mask);
    cairo_translate(maskCairo, margin - left, margin - top);
    cairo_transform(maskCairo, &toDevice);
    cairo_set_source(maskCairo, shape);
    cairo_paint(maskCairo);
    cairo_destroy(maskCairo);
    blur(mask, radius);
    cairo_mask_surface(cairo_, mask, left - margin + shadow.dx * pixelsPerPoint_,
                       top - margin + shadow.dy * pixelsPerPoint_);
    cairo_surface_destroy(mask);
    cairo_restore(cairo_);
}

}
