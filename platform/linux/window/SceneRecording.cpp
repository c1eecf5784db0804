#include "platform/linux/window/SceneRecording.h"

#include "platform/graphics/Bitmap.h"
#include "platform/host/ForeignContent.h"
#include "platform/linux/window/ForeignPicture.h"
#include "platform/linux/window/GtkForeignContent.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

namespace vistrel {

namespace {

using Pixels = cairo_rectangle_int_t;

/// Far beyond any screen, and small enough for sums of two.
constexpr double kFar = 1 << 20;
constexpr Pixels kEverywhere{-(1 << 20), -(1 << 20), 1 << 21, 1 << 21};
/// Of a pixel: what products of scales and rotations are off by, and nobody sees.
constexpr double kNegligible = 0.01;
/// More pieces than this cost more than they save.
constexpr int kMostRest = 2;
/// A clip with at least this many paints is worth its own node.
constexpr std::ptrdiff_t kManyPaints = 4;

int pixel(double value) {
    return static_cast<int>(std::clamp(value, -kFar, kFar));
}

Pixels between(double left, double top, double right, double bottom) {
    return {pixel(left), pixel(top), std::max(0, pixel(right) - pixel(left)),
            std::max(0, pixel(bottom) - pixel(top))};
}

/// All pixels that the rectangle touches.
Pixels roundedOut(const CGRect& rect) {
    return between(std::floor(rect.minX() + kNegligible), std::floor(rect.minY() + kNegligible),
                   std::ceil(rect.maxX() - kNegligible), std::ceil(rect.maxY() - kNegligible));
}

/// All pixels that lie completely inside it.
Pixels roundedIn(const CGRect& rect) {
    return between(std::ceil(rect.minX() - kNegligible), std::ceil(rect.minY() - kNegligible),
                   std::floor(rect.maxX() + kNegligible), std::floor(rect.maxY() + kNegligible));
}

Pixels intersection(const Pixels& a, const Pixels& b) {
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    return {left, top, std::max(0, std::min(a.x + a.width, b.x + b.width) - left),
            std::max(0, std::min(a.y + a.height, b.y + b.height) - top)};
}

/// Values of any plain type, one after the other.
class Words {
public:
    template <typename Value>
    void add(const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        constexpr std::size_t kCount =
            (sizeof value + sizeof(std::uint64_t) - 1) / sizeof(std::uint64_t);
        words_.resize(words_.size() + kCount);
        std::memcpy(words_.data() + words_.size() - kCount, &value, sizeof value);
    }
    std::vector<std::uint64_t> take() { return std::move(words_); }

private:
    std::vector<std::uint64_t> words_;
};

bool isSame(const Pixels& a, const Pixels& b) {
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

bool isEmpty(const Pixels& pixels) {
    return pixels.width == 0 || pixels.height == 0;
}

}

void SceneRecording::begin(double pixelsPerUnit) {
    steps_.clear();
    states_.assign(1, {kNone, kNone, CGAffineTransformMakeScale(pixelsPerUnit, pixelsPerUnit),
                       kEverywhere, kEverywhere, true});
}

SceneRecording::Step& SceneRecording::add(Kind kind, const CGRect& rect) {
    Step& step = steps_.emplace_back();
    step.kind = kind;
    step.rect = rect;
    return step;
}

SceneRecording::State& SceneRecording::push(Kind kind, const CGRect& rect) {
    states_.push_back(states_.back());
    states_.back().step = steps_.size();
    add(kind, rect);
    return states_.back();
}

void SceneRecording::pushTransform(const CGAffineTransform& transform) {
    State& state = push(Kind::Transform, {});
    state.toDevice = transform.concat(state.toDevice);
    steps_.back().transform = transform;
}

void SceneRecording::pushClip(const CGRect& rect) {
    keepClipOpen();
    State& state = push(Kind::Clip, rect);
    steps_.back().isOneNode = true;
    state.openClip = state.step;
    const CGRect device = state.toDevice.apply(rect);
    state.clip = intersection(state.clip, roundedOut(device));
    state.full = intersection(state.full, roundedIn(device));
    state.isSolid = state.isSolid && state.toDevice.keepsRectangles();
}

void SceneRecording::pushOpacity(double opacity) {
    State& state = push(Kind::Opacity, {});
    state.isSolid = state.isSolid && opacity >= 1;
    steps_.back().opacity = opacity;
}

void SceneRecording::pop() {
    steps_[states_.back().step].end = steps_.size();
    states_.pop_back();
    add(Kind::Pop, {});
}

void SceneRecording::fillColor(const CGRect& rect, const UIColor& color) {
    addPaint(Kind::Color, rect, color.alpha >= 1);
    steps_.back().color = color;
}

void SceneRecording::drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) {
    addPaint(Kind::Picture, rect, picture && picture->isOpaque());
    steps_.back().picture = picture;
}

void SceneRecording::drawForeign(const CGRect& rect, host::ForeignContent& content) {
    keepClipOpen();
    const State& state = states_.back();
    Step& step = add(Kind::Foreign, rect);
    step.foreign = &content;
    step.touched = intersection(state.clip, roundedOut(state.toDevice.apply(rect)));
    const auto* foreign = dynamic_cast<const GtkForeignContent*>(&content);
    const auto place = PixelPlace::of(rect, state.toDevice);
    if (foreign && foreign->isOpaque() && state.isSolid && place)
        step.hidden = intersection(state.full, {place->x, place->y, place->width, place->height});
}

/// The innermost clip contains something that cannot be painted into one node.
void SceneRecording::keepClipOpen() {
    if (states_.back().openClip != kNone)
        steps_[states_.back().openClip].isOneNode = false;
}

void SceneRecording::addPaint(Kind kind, const CGRect& rect, bool isOpaque) {
    const State& state = states_.back();
    const CGRect device = state.toDevice.apply(rect);
    Step& step = add(kind, rect);
    step.transform = state.toDevice;
    step.isPaint = true;
    step.touched = intersection(state.clip, roundedOut(device));
    if (isOpaque && state.isSolid && state.toDevice.keepsRectangles())
        step.hidden = intersection(state.full, roundedIn(device));
}

void SceneRecording::finish() {
    findCovered();
    for (std::size_t i = 0; i < steps_.size(); ++i)
        steps_[i].isOneNode = steps_[i].isOneNode && holdsManyPaints(i);
}

bool SceneRecording::holdsManyPaints(std::size_t clip) const {
    const auto first = steps_.begin() + static_cast<std::ptrdiff_t>(clip);
    const auto end = steps_.begin() + static_cast<std::ptrdiff_t>(steps_[clip].end);
    return std::count_if(first, end, [](const Step& step) {
               return step.isPaint && !step.isCovered;
           }) >= kManyPaints;
}

void SceneRecording::findCovered() {
    cairo_region_t* hidden = cairo_region_create();
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        if (!step->isPaint && step->kind != Kind::Foreign)
            continue;
        step->isCovered =
            isEmpty(step->touched) ||
            cairo_region_contains_rectangle(hidden, &step->touched) == CAIRO_REGION_OVERLAP_IN;
        if (step->isCovered || isEmpty(step->hidden))
            continue;
        if (step->kind == Kind::Color)
            findRest(*step, hidden);
        cairo_region_union_rectangle(hidden, &step->hidden);
    }
    cairo_region_destroy(hidden);
}

void SceneRecording::findRest(Step& step, const cairo_region_t* hidden) {
    if (cairo_region_contains_rectangle(hidden, &step.touched) == CAIRO_REGION_OVERLAP_OUT ||
        !isSame(step.touched, step.hidden))
        return;
    cairo_region_t* rest = cairo_region_create_rectangle(&step.touched);
    cairo_region_subtract(rest, hidden);
    const int count = cairo_region_num_rectangles(rest);
    for (int i = 0; count <= kMostRest && i < count; ++i) {
        Pixels part;
        cairo_region_get_rectangle(rest, i, &part);
        step.rest.push_back(
            step.transform.inverted().apply(CGRectMake(part.x, part.y, part.width, part.height)));
    }
    cairo_region_destroy(rest);
}

std::vector<std::uint64_t> SceneRecording::contentOf(std::size_t clip) const {
    Words words;
    words.add(steps_[clip].rect);
    for (std::size_t i = clip + 1; i < steps_[clip].end; ++i) {
        const Step& step = steps_[i];
        if (step.isCovered)
            continue;
        words.add(step.kind);
        words.add(step.rect);
        switch (step.kind) {
        case Kind::Transform:
            words.add(step.transform);
            break;
        case Kind::Opacity:
            words.add(step.opacity);
            break;
        case Kind::Color:
            words.add(step.color);
            for (const CGRect& part : step.rest)
                words.add(part);
            break;
        case Kind::Picture:
            words.add(reinterpret_cast<std::uintptr_t>(step.picture.get()));
            words.add(step.picture ? step.picture->generation() : 0);
            break;
        default:
            break;
        }
    }
    return words.take();
}

void SceneRecording::replay(std::size_t index, SceneVisitor& visitor) const {
    const Step& step = steps_[index];
    if (step.isCovered && step.kind != Kind::Foreign)
        return;
    switch (step.kind) {
    case Kind::Transform:
        visitor.pushTransform(step.transform);
        break;
    case Kind::Clip:
        visitor.pushClip(step.rect);
        break;
    case Kind::Opacity:
        visitor.pushOpacity(step.opacity);
        break;
    case Kind::Pop:
        visitor.pop();
        break;
    case Kind::Color:
        for (const CGRect& part : step.rest)
            visitor.fillColor(part, step.color);
        if (step.rest.empty())
            visitor.fillColor(step.rect, step.color);
        break;
    case Kind::Picture:
        visitor.drawPicture(step.rect, step.picture);
        break;
    case Kind::Foreign:
        visitor.drawForeign(step.rect, *step.foreign);
        break;
    }
}

}
