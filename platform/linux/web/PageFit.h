#pragma once
#include "platform/linux/NativeReference.h"

#include <webkit/webkit.h>

#include <memory>
#include <string>

namespace vistrel {

/// Zooms a page that is wider than its place out until it fits, as the phone does.
class PageFit : public std::enable_shared_from_this<PageFit> {
public:
    explicit PageFit(NativeReference<WebKitWebView> view)
        : view_(std::move(view)) {}

    void setEnabled(bool enabled);
    /// The user's choice, on top of the fit.
    void setZoom(double zoom);
    void setPixelsPerPoint(double pixelsPerPoint);
    double pixelsPerPoint() const { return pixelsPerPoint_; }
    void loadStarted() { measuresLeft_ = 0; }
    /// The old page is gone.
    void loadCommitted();
    void loadFinished();

private:
    void measure();
    void fitTo(const std::string& measured);
    void measureAgain();
    void applyZoom();

    NativeReference<WebKitWebView> view_;
    bool enabled_ = false;
    double pixelsPerPoint_ = 1;
    double fit_ = 1;
    double zoom_ = 1;
    int measuresLeft_ = 0; ///< of the width, for this load
};

}
