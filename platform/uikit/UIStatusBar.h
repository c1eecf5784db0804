#pragma once
#include "platform/uikit/UIView.h"

#include <cstdint>
#include <string>

namespace vistrel {

/// The 20-point bar at the top of the screen: clock, network activity. Redrawn when the minute
/// changes.
class UIStatusBar : public UIView {
public:
    UIStatusBar();
    ~UIStatusBar() override;

    void setNetworkActivity(bool active);
    /// The minute is read from the loop's wall clock.
    void updateClock();
    const std::string& clockText() const { return clockText_; }

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    void scheduleClock();
    void scheduleSpinner();

    std::string clockText_;
    bool networkActivity_ = false;
    int spinnerStep_ = 0;
    std::uint64_t clockToken_ = 0;
    std::uint64_t spinnerToken_ = 0;
};

}
