#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/uikit/SceneVisitor.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <utility>

namespace vistrel {

/// Counts the paintings of pictures of one size: each has a new address or generation.
class PaintingCounter : public SceneVisitor {
public:
    PaintingCounter(int width, int height)
        : width_(width)
        , height_(height) {}
    void pushTransform(const CGAffineTransform&) override {}
    void pushClip(const CGRect&) override {}
    void pushOpacity(double) override {}
    void pop() override {}
    void fillColor(const CGRect&, const UIColor&) override {}
    void drawPicture(const CGRect&, const std::shared_ptr<const Bitmap>& picture) override {
        if (picture->width() == width_ && picture->height() == height_)
            paintings_.insert({picture.get(), picture->generation()});
    }
    void drawForeign(const CGRect&, host::ForeignContent&) override {}
    std::size_t paintings() const { return paintings_.size(); }

private:
    int width_;
    int height_;
    std::set<std::pair<const Bitmap*, std::uint64_t>> paintings_;
};

}
