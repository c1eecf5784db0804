#include "platform/graphics/TextLayout.h"

#include "platform/graphics/ValidText.h"

#include <cmath>
#include <functional>
#include <list>
#include <map>
#include <pango/pangocairo.h>
#include <unordered_map>

namespace vistrel::TextLayout {

namespace {

constexpr const char* kFamily = "Liberation Sans";
constexpr std::size_t kKeptLayouts = 1024;

struct Key {
    std::string text;
    double size = 0;
    bool bold = false;
    int width = 0; ///< Pango units
    UILineBreakMode mode = UILineBreakMode::Clip;
    friend bool operator==(const Key&, const Key&) = default;
};

struct KeyHash {
    std::size_t operator()(const Key& key) const {
        std::size_t hash = std::hash<std::string>()(key.text);
        hash = hash * 31 + std::hash<double>()(key.size);
        hash = hash * 31 + static_cast<std::size_t>(key.width) * 16;
        return hash * 31 + (key.bold ? 8U : 0U) + static_cast<std::size_t>(key.mode);
    }
};

/// Drops the least recently used layouts.
class LayoutCache {
public:
    PangoLayout* find(const Key& key) {
        const auto found = index_.find(key);
        if (found == index_.end())
            return nullptr;
        order_.splice(order_.begin(), order_, found->second);
        return found->second->second;
    }
    void keep(Key key, PangoLayout* layout) {
        order_.emplace_front(key, layout);
        index_.emplace(std::move(key), order_.begin());
        if (order_.size() > kKeptLayouts) {
            index_.erase(order_.back().first);
            g_object_unref(order_.back().second);
            order_.pop_back();
        }
    }

private:
    std::list<std::pair<Key, PangoLayout*>> order_;
    std::unordered_map<Key, std::list<std::pair<Key, PangoLayout*>>::iterator, KeyHash> index_;
};

PangoContext* context() {
    static PangoContext* made = [] {
        auto* created = pango_font_map_create_context(pango_cairo_font_map_get_default());
        // One unit is one point at every scale: nothing is aligned to pixels.
        pango_cairo_context_set_resolution(created, 72);
        auto* options = cairo_font_options_create();
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        pango_cairo_context_set_font_options(created, options);
        cairo_font_options_destroy(options);
        pango_context_set_round_glyph_positions(created, FALSE);
        return created;
    }();
    return made;
}

PangoFontDescription* describe(const UIFont& font) {
    auto* description = pango_font_description_new();
    pango_font_description_set_family_static(description, kFamily);
    pango_font_description_set_weight(description,
                                      font.isBold() ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(description, font.pointSize() * PANGO_SCALE);
    return description;
}

PangoEllipsizeMode ellipsizeMode(UILineBreakMode mode) {
    switch (mode) {
    case UILineBreakMode::HeadTruncation:
        return PANGO_ELLIPSIZE_START;
    case UILineBreakMode::MiddleTruncation:
        return PANGO_ELLIPSIZE_MIDDLE;
    case UILineBreakMode::TailTruncation:
        return PANGO_ELLIPSIZE_END;
    default:
        return PANGO_ELLIPSIZE_NONE;
    }
}

PangoLayout* makeLayout(const Key& key, const UIFont& font) {
    auto* layout = pango_layout_new(context());
    auto* description = describe(font);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
    const bool wraps =
        key.mode == UILineBreakMode::WordWrap || key.mode == UILineBreakMode::CharacterWrap;
    // A single line shows the first paragraph.
    const auto text =
        validText(wraps ? std::string_view(key.text)
                        : std::string_view(key.text).substr(0, key.text.find_first_of("\n\r")));
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    if (key.width >= 0 && key.mode != UILineBreakMode::Clip)
        pango_layout_set_width(layout, key.width);
    if (wraps) {
        pango_layout_set_wrap(layout, key.mode == UILineBreakMode::WordWrap ? PANGO_WRAP_WORD_CHAR
                                                                            : PANGO_WRAP_CHAR);
    }
    pango_layout_set_ellipsize(layout, ellipsizeMode(key.mode));
    return layout;
}

Metrics readMetrics(const UIFont& font) {
    auto* description = describe(font);
    auto* metrics = pango_context_get_metrics(context(), description, nullptr);
    const Metrics result = {
        static_cast<double>(pango_font_metrics_get_ascent(metrics)) / PANGO_SCALE,
        static_cast<double>(pango_font_metrics_get_descent(metrics)) / PANGO_SCALE};
    pango_font_metrics_unref(metrics);
    pango_font_description_free(description);
    return result;
}

}

Metrics metricsOfFont(const UIFont& font) {
    static std::map<std::pair<double, bool>, Metrics> known;
    const auto key = std::make_pair(font.pointSize(), font.isBold());
    const auto found = known.find(key);
    return found != known.end() ? found->second
                                : known.emplace(key, readMetrics(font)).first->second;
}

PangoLayout* layoutFor(const std::string& text, const UIFont& font, double width,
                       UILineBreakMode mode) {
    static auto& cache = *new LayoutCache;
    Key key = {text, font.pointSize(), font.isBold(),
               width < 0 ? -1 : static_cast<int>(std::lround(width * PANGO_SCALE)), mode};
    if (auto* kept = cache.find(key))
        return kept;
    auto* layout = makeLayout(key, font);
    cache.keep(std::move(key), layout);
    return layout;
}

}
