#include "platform/linux/web/PageFit.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/web/PageScripts.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vistrel {

namespace {

/// The phone lays out a page that says nothing of its width at most this wide.
constexpr double kWidestLayout = 980;

/// How wide the page wants to be, and how wide it is shown, both in its own pixels.
constexpr const char* kWidthScript =
    "(function(){var d=document.documentElement,b=document.body;"
    "return Math.max(d?d.scrollWidth:0,b?b.scrollWidth:0)+' '+window.innerWidth;})()";
/// A page that has loaded before it has its place is measured again when it may have it.
constexpr guint kMeasureAgainMilliseconds = 50;
constexpr int kMeasures = 100;

}

void PageFit::setEnabled(bool enabled) {
    enabled_ = enabled;
    if (!enabled) {
        fit_ = 1;
        applyZoom();
    }
}

void PageFit::setPixelsPerPoint(double pixelsPerPoint) {
    if (pixelsPerPoint == pixelsPerPoint_)
        return;
    pixelsPerPoint_ = pixelsPerPoint;
    applyZoom();
}

void PageFit::setZoom(double zoom) {
    zoom_ = zoom;
    applyZoom();
}

void PageFit::loadCommitted() {
    fit_ = 1;
    applyZoom();
}

void PageFit::loadFinished() {
    measuresLeft_ = kMeasures;
    if (enabled_)
        measure();
}

void PageFit::measure() {
    --measuresLeft_;
    PageScripts::evaluate(view_.get(), kWidthScript, nullptr, weakly(this, &PageFit::fitTo));
}

void PageFit::fitTo(const std::string& measured) {
    char* end = nullptr;
    const double wanted = std::strtod(measured.c_str(), &end);
    const double shown = std::strtod(end, nullptr);
    const double place =
        gtk_widget_get_width(GTK_WIDGET(view_.get())) / (pixelsPerPoint_ * fit_ * zoom_);
    // The page learns its size later than the widget.
    if (place <= 1 || std::abs(shown - place) > std::max(2.0, place / 100)) {
        measureAgain();
        return;
    }
    // What the user has enlarged may be wider than its place.
    const double ratio = wanted / (shown * std::max(1.0, zoom_));
    if (!(ratio > 1.01))
        return;
    fit_ = std::min(1.0, std::max(fit_ / ratio, place * fit_ / kWidestLayout));
    applyZoom();
}

void PageFit::measureAgain() {
    if (measuresLeft_ > 0)
        callLater(weakly(this, &PageFit::measure), kMeasureAgainMilliseconds);
}

void PageFit::applyZoom() {
    webkit_web_view_set_zoom_level(view_.get(), pixelsPerPoint_ * fit_ * zoom_);
}

}
