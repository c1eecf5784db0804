// The reflection of a cover of 320 x 320 points at two pixels per point, against the same picture
// through Cairo's mask compositing.
#include "audio/OvoAudioPlayerReflection.h"
#include "bench/Bench.h"
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIButton.h"

#include <cairo.h>

namespace {

constexpr int kSide = 640;
constexpr int kRows = 416;
constexpr double kMostSeconds = 0.001;

std::shared_ptr<vistrel::Bitmap> makeCover() {
    auto cover = std::make_shared<vistrel::Bitmap>(kSide, kSide);
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x)
            cover->row(y)[x] = 0xFF000000U | static_cast<unsigned>(x * y) % 0xFFFFFFU;
    return cover;
}

/// The same with Cairo: flipped and drawn through a gradient mask.
class CairoReflection {
public:
    explicit CairoReflection(vistrel::Bitmap& cover)
        : cover_(cairo_image_surface_create_for_data(cover.data(), CAIRO_FORMAT_ARGB32, kSide,
                                                     kSide, cover.stride())) {}
    ~CairoReflection() { cairo_surface_destroy(cover_); }
    CairoReflection(const CairoReflection&) = delete;
    CairoReflection& operator=(const CairoReflection&) = delete;

    void operator()() const {
        cairo_surface_t* target = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kRows);
        cairo_t* context = cairo_create(target);
        cairo_pattern_t* mask = cairo_pattern_create_linear(0, 0, 0, kRows);
        cairo_pattern_add_color_stop_rgba(mask, 0, 0, 0, 0, 1);
        cairo_pattern_add_color_stop_rgba(mask, 1, 0, 0, 0, 0);
        cairo_save(context);
        cairo_translate(context, 0, kSide);
        cairo_scale(context, 1, -1);
        cairo_set_source_surface(context, cover_, 0, 0);
        cairo_restore(context);
        cairo_mask(context, mask);
        cairo_pattern_destroy(mask);
        cairo_destroy(context);
        cairo_surface_flush(target);
        bench::keep(cairo_image_surface_get_data(target));
        cairo_surface_destroy(target);
    }

private:
    cairo_surface_t* cover_;
};

}

int main() {
    vistrel::UIImage::setScreenScale(2);
    const auto cover = makeCover();
    vistrel::UIButton artwork(vistrel::CGRectMake(0, 0, 320, 320));
    artwork.setImageForState(std::make_shared<vistrel::UIImage>(cover, 2),
                             vistrel::UIControlState::Normal);
    auto ours = [&] {
        bench::keep(vistrel::reflectedImageWithHeight(artwork, 208));
    };
    const CairoReflection peer(*cover);
    bool holds = bench::compare({"reflection", 0, 1.0}, ours, [&] { peer(); });
    const double seconds = bench::bestSecondsApart(ours, 0);
    std::printf("reflection time: %.3f ms, at most %.3f ms %s\n", seconds * 1e3, kMostSeconds * 1e3,
                seconds <= kMostSeconds ? "ok" : "short");
    return holds && seconds <= kMostSeconds ? 0 : 1;
}
