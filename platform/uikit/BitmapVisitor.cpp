#include "platform/uikit/BitmapVisitor.h"

namespace vistrel {

void BitmapVisitor::pushTransform(const CGAffineTransform& transform) {
    context_.saveGState();
    context_.concat(transform);
    layers_.push_back(false);
}

void BitmapVisitor::pushClip(const CGRect& rect) {
    context_.saveGState();
    context_.clipToRect(rect);
    layers_.push_back(false);
}

void BitmapVisitor::pushOpacity(double opacity) {
    context_.saveGState();
    context_.beginTransparencyLayer(opacity);
    layers_.push_back(true);
}

void BitmapVisitor::pop() {
    if (layers_.back())
        context_.endTransparencyLayer();
    layers_.pop_back();
    context_.restoreGState();
}

void BitmapVisitor::fillColor(const CGRect& rect, const UIColor& color) {
    context_.setFillColor(color);
    context_.fillRect(rect);
}

void BitmapVisitor::drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>& picture) {
    context_.drawBitmap(*picture, rect);
}

}
