#include "bench/Bench.h"
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIStringDrawing.h"

#include <pango/pangocairo.h>

#include <memory>

namespace {

using vistrel::Bitmap;
using vistrel::CGContext;
using vistrel::UIFont;

constexpr int kWidth = 640;
constexpr int kHeight = 88;
constexpr double kScale = 2;
constexpr const char* kTitle = "The long title of a film that is cut at the end of its row";
constexpr const char* kDetail = "Received 12.50MB of 103.20MB";

/// One row's texts, drawn with the layer's calls.
void drawRowOurs(const std::shared_ptr<Bitmap>& bitmap) {
    CGContext context(bitmap, kScale);
    vistrel::UIGraphicsPushContext(context);
    vistrel::UIColor::blackColor().set();
    vistrel::drawInRectWithFont(kTitle, vistrel::CGRectMake(10, 4, 265, 20),
                                UIFont::boldSystemFontOfSize(16),
                                vistrel::UILineBreakMode::TailTruncation);
    vistrel::drawInRectWithFont(kDetail, vistrel::CGRectMake(10, 24, 265, 16),
                                UIFont::systemFontOfSize(12),
                                vistrel::UILineBreakMode::TailTruncation);
    vistrel::UIGraphicsPopContext();
}

void drawLineOfPeer(cairo_t* cairo, const char* text, const char* font, double top) {
    auto* layout = pango_cairo_create_layout(cairo);
    auto* description = pango_font_description_from_string(font);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
    pango_layout_set_text(layout, text, -1);
    pango_layout_set_width(layout, 265 * PANGO_SCALE);
    pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
    cairo_move_to(cairo, 10, top);
    pango_cairo_show_layout(cairo, layout);
    g_object_unref(layout);
}

/// The same texts with a new layout for each, as a simple cell would draw them.
void drawRowPeer(const std::shared_ptr<Bitmap>& bitmap) {
    auto* surface = cairo_image_surface_create_for_data(bitmap->data(), CAIRO_FORMAT_ARGB32, kWidth,
                                                        kHeight, bitmap->stride());
    auto* cairo = cairo_create(surface);
    cairo_scale(cairo, kScale, kScale);
    drawLineOfPeer(cairo, kTitle, "Liberation Sans Bold 16px", 4);
    drawLineOfPeer(cairo, kDetail, "Liberation Sans 12px", 24);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
}

bool texts() {
    auto bitmap = std::make_shared<Bitmap>(kWidth, kHeight);
    return bench::compare(
        {"drawing a row's texts against a new Pango layout for each", 0, 1.5},
        [=] { drawRowOurs(bitmap); }, [=] { drawRowPeer(bitmap); });
}

}

int main() {
    return texts() ? 0 : 1;
}
