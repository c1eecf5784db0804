#pragma once
#include "platform/uikit/SceneVisitor.h"

#include <cairo.h>

#include <cstdint>
#include <vector>

namespace vistrel {

/// A recorded walk over the view tree, to be drawn with the least work for the software renderer.
///
/// It finds fills and pictures that later opaque ones hide completely: lists cover their
/// backgrounds, bars cover the window. Of a fill that is hidden in part, as by a film, the rest is
/// filled. It also finds clips whose content is best painted into a
/// single render node, because each node costs a bitmap: those of lists.
class SceneRecording : public SceneVisitor {
public:
    void pushTransform(const CGAffineTransform& transform) override;
    void pushClip(const CGRect& rect) override;
    void pushOpacity(double opacity) override;
    void pop() override;
    void fillColor(const CGRect& rect, const UIColor& color) override;
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) override;
    /// Only a moving picture hides anything. Foreign content is replayed even when it is covered,
    /// since a widget must keep its place.
    void drawForeign(const CGRect& rect, host::ForeignContent& content) override;

    /// Call before a walk. `pixelsPerUnit`: device pixels per unit of the outermost coordinates.
    void begin(double pixelsPerUnit);
    /// Call after it.
    void finish();

    /// The calls of the walk, in order.
    std::size_t steps() const { return steps_.size(); }
    /// Whether nothing would be seen of a paint or of foreign content.
    bool isCovered(std::size_t step) const { return steps_[step].isCovered; }
    /// Whether a step is a clip whose content goes into one node. Such a clip contains neither
    /// foreign content nor other clips.
    bool isOneNode(std::size_t step) const { return steps_[step].isOneNode; }
    /// The rectangle of a clip, and the step that ends it.
    const CGRect& rectOf(std::size_t step) const { return steps_[step].rect; }
    std::size_t endOf(std::size_t clip) const { return steps_[clip].end; }

    /// Everything that is drawn between a clip and its end, as words to compare: equal when the
    /// same would be painted.
    std::vector<std::uint64_t> contentOf(std::size_t clip) const;

    /// The picture of a step; null when it draws none.
    const std::shared_ptr<const Bitmap>& pictureOf(std::size_t step) const {
        return steps_[step].picture;
    }

    /// Repeats a step's call, unless it is a paint that is covered.
    void replay(std::size_t step, SceneVisitor& visitor) const;

private:
    enum class Kind { Transform, Clip, Opacity, Pop, Color, Picture, Foreign };
    /// A call and its arguments.
    struct Step {
        Kind kind;
        CGRect rect;
        CGAffineTransform transform; ///< a push's own, or a paint's to the device
        double opacity = 1;
        UIColor color;
        std::shared_ptr<const Bitmap> picture;
        host::ForeignContent* foreign = nullptr;
        cairo_rectangle_int_t touched{}; ///< all pixels that a paint may change
        cairo_rectangle_int_t hidden{};  ///< pixels of which it leaves nothing; empty for none
        std::vector<CGRect> rest;        ///< of a fill that is partly hidden
        bool isPaint = false;
        bool isCovered = false;
        bool isOneNode = false;
        std::size_t end = 0;
    };
    /// The combined effect of the pushes so far.
    struct State {
        std::size_t step;     ///< that pushed it
        std::size_t openClip; ///< the step of the innermost clip, or none
        CGAffineTransform toDevice;
        cairo_rectangle_int_t clip; ///< whole pixels in which something may be painted
        cairo_rectangle_int_t full; ///< pixels that the clips leave whole
        bool isSolid;               ///< no opacity, and no clip that is not an upright rectangle
    };
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    Step& add(Kind kind, const CGRect& rect);
    void addPaint(Kind kind, const CGRect& rect, bool isOpaque);
    State& push(Kind kind, const CGRect& rect);
    void keepClipOpen();
    void findCovered();
    static void findRest(Step& step, const cairo_region_t* hidden);
    bool holdsManyPaints(std::size_t clip) const;

    std::vector<Step> steps_;
    std::vector<State> states_;
};

}
