#include "platform/linux/window/WindowSize.h"

#include "platform/foundation/NSUserDefaults.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/window/ScreenPlacement.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr CGSize kScreen = ScreenPlacement::kScreen;
constexpr double kShareOfMonitor = 0.9;
constexpr double kSmallestScale = 0.5;
constexpr double kLargestScale = 2;
constexpr const char* kWidthKey = "windowWidth";
constexpr const char* kHeightKey = "windowHeight";

/// Null when there is none.
NativeReference<GdkMonitor> firstMonitor() {
    GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
    return NativeReference<GdkMonitor>::adopt(GDK_MONITOR(g_list_model_get_item(monitors, 0)));
}

WindowSize scaled(double scale) {
    return {static_cast<int>(std::lround(kScreen.width * scale)),
            static_cast<int>(std::lround(kScreen.height * scale))};
}

/// In halves, so that pictures made for whole scales stay sharp.
double scaleThatFits(WindowSize area) {
    const double fits = std::min(area.width * kShareOfMonitor / kScreen.width,
                                 area.height * kShareOfMonitor / kScreen.height);
    return std::clamp(std::floor(fits * 2) / 2, kSmallestScale, kLargestScale);
}

}

WindowSize WindowSize::initial(double scale) {
    const auto monitor = firstMonitor();
    GdkRectangle area{0, 0, static_cast<int>(kScreen.width), static_cast<int>(kScreen.height)};
    if (monitor)
        gdk_monitor_get_geometry(monitor.get(), &area);
    const WindowSize most{area.width, area.height};
    const WindowSize least = scaled(kSmallestScale);
    const auto& defaults = NSUserDefaults::standardUserDefaults();
    WindowSize size{static_cast<int>(defaults.floatForKey(kWidthKey)),
                    static_cast<int>(defaults.floatForKey(kHeightKey))};
    if (scale > 0)
        size = scaled(scale);
    else if (size.width < least.width || size.height < least.height)
        size = scaled(scaleThatFits(most));
    return {std::min(size.width, most.width), std::min(size.height, most.height)};
}

double WindowSize::initialPixelsPerPoint(double scale) {
    const auto monitor = firstMonitor();
    return initial(scale).unitsPerPoint() *
           (monitor ? gdk_monitor_get_scale_factor(monitor.get()) : 1);
}

double WindowSize::unitsPerPoint() const {
    return ScreenPlacement({static_cast<double>(width), static_cast<double>(height)},
                           UIInterfaceOrientation::Portrait)
        .unitsPerPoint();
}

void WindowSize::remember() const {
    auto& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setFloatForKey(static_cast<float>(width), kWidthKey);
    defaults.setFloatForKey(static_cast<float>(height), kHeightKey);
    defaults.synchronize();
}

}
