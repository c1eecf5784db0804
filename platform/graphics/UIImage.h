#pragma once
#include "platform/graphics/CGGeometry.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace vistrel {
class Bitmap;

/// A picture: pixels, their number per point, and the caps for stretching.
/// Immutable.
class UIImage {
public:
    UIImage(std::shared_ptr<const Bitmap> bitmap, double scale);

    /// A resource by name ("Logo.png"; the default extension is png); kept for the life of the
    /// process. The variant that best fits the screen's scale is used ("Logo@2x.png"). Null when
    /// missing.
    static std::shared_ptr<const UIImage> imageNamed(const std::string& name);
    /// Starts reading what imageNamed will need at that screen scale, on a separate thread;
    /// imageNamed then waits for it.
    static void readAhead(const std::string& name, double screenScale);
    /// A picture file by machine path, read each time; variants as for imageNamed. Null when
    /// missing or unreadable.
    static std::shared_ptr<const UIImage> imageWithContentsOfFile(const std::string& path);
    /// A picture file's bytes, one pixel per point. Null when they are not a picture.
    static std::shared_ptr<const UIImage> imageWithData(std::span<const std::byte> data);
    /// The scale for which resources are chosen and views painted; set by the window.
    static void setScreenScale(double scale);
    static double screenScale();

    CGSize size() const; ///< points
    double scale() const { return scale_; }
    const std::shared_ptr<const Bitmap>& bitmap() const { return bitmap_; }

    /// Stretches by repeating the one column right of the left cap and the row under the top cap;
    /// the rest keeps its size. A cap of 0 stretches the whole picture in that direction.
    std::shared_ptr<const UIImage> stretchableImage(int leftCapWidth, int topCapHeight) const;
    int leftCapWidth() const { return leftCapWidth_; }
    int topCapHeight() const { return topCapHeight_; }

    /// Into the current context.
    void drawAtPoint(CGPoint point) const;
    void drawInRect(const CGRect& rect) const;

private:
    std::shared_ptr<const Bitmap> bitmap_;
    double scale_;
    int leftCapWidth_ = 0;
    int topCapHeight_ = 0;
};

}
