#pragma once
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIColor.h"

#include <memory>
#include <vector>

// Cairo's names.
struct _cairo;         // NOLINT(bugprone-reserved-identifier)
struct _cairo_pattern; // NOLINT(bugprone-reserved-identifier)

namespace vistrel {
class Bitmap;
class UIFont;

/// Colours along a line, evenly spaced unless locations are given.
struct CGGradient {
    std::vector<UIColor> colors;
    std::vector<double> locations; ///< 0 to 1, one for each colour; empty: evenly spaced

    /// Of a colour, from 0 to 1.
    double place(std::size_t colour) const;

    friend bool operator==(const CGGradient&, const CGGradient&) = default;
};

/// Draws into a bitmap. Origin at the top left, y downward, units points of `scale` pixels.
class CGContext {
public:
    CGContext(std::shared_ptr<Bitmap> bitmap, double scale);
    ~CGContext();
    CGContext(const CGContext&) = delete;
    CGContext& operator=(const CGContext&) = delete;

    void saveGState();
    void restoreGState();
    void translate(double tx, double ty);
    void scale(double sx, double sy);
    void rotate(double radians);
    void concat(const CGAffineTransform& transform);

    void setFillColor(const UIColor& color);
    void setStrokeColor(const UIColor& color);
    void setLineWidth(double width);
    void setAlpha(float alpha);

    /// A clear colour replaces what is there; others are painted over it.
    void fillRect(const CGRect& rect);
    void fillEllipse(const CGRect& rect);

    void beginPath();
    void moveTo(double x, double y);
    void lineTo(double x, double y);
    void curveTo(double c1x, double c1y, double c2x, double c2y, double x, double y);
    void arc(double x, double y, double radius, double startAngle, double endAngle);
    void closePath();
    void addRoundedRect(const CGRect& rect, double radius);
    void fillPath();
    void strokePath();
    /// Both leave the path empty.
    void clipToPath();
    void clipToRect(const CGRect& rect);

    void drawLinearGradient(const CGGradient& gradient, CGPoint start, CGPoint end);
    void drawRadialGradient(const CGGradient& gradient, CGPoint center, double radius);
    /// Composites everything drawn until the matching end as one, faded to `alpha`.
    void beginTransparencyLayer(double alpha);
    void endTransparencyLayer();

    /// Stretches the bitmap over `rect`.
    void drawBitmap(const Bitmap& bitmap, const CGRect& rect);
    /// Stretches the part `source` (pixels) of the bitmap over `rect`.
    void drawBitmapPart(const Bitmap& bitmap, const CGRect& source, const CGRect& rect);

    /// The drawing surface's handle, for the drawing code of this folder.
    _cairo* native() const { return cairo_; }
    double pixelsPerPoint() const { return pixelsPerPoint_; }
    const UIColor& fillColor() const { return state_.fillColor; }
    float alpha() const { return state_.alpha; }

private:
    /// What saveGState keeps beside Cairo's own state.
    struct State {
        UIColor fillColor;
        UIColor strokeColor;
        float alpha = 1;
    };
    void setSource(const UIColor& color);
    void paintGradient(_cairo_pattern* pattern, const CGGradient& gradient);

    std::shared_ptr<Bitmap> bitmap_;
    double pixelsPerPoint_;
    _cairo* cairo_;
    State state_;
    std::vector<State> states_;
    std::vector<double> layerAlphas_;
};

/// The context for drawing calls that name none; null outside a display pass.
CGContext* UIGraphicsGetCurrentContext();
void UIGraphicsPushContext(CGContext& context);
void UIGraphicsPopContext();
/// Fills with the current colour.
void CGContextFillRect(CGContext* context, const CGRect& rect);

}
