#pragma once
#include "ads/Object/GADPrivateObject.h"
#include "platform/foundation/NSRunLoop.h"

#include <optional>

namespace vistrel {

/// The private half of a GADWebView.
class GADWebViewPrivate : public GADPrivateObject {
public:
    bool touched() const { return touched_; }
    void setTouched(bool touched) {
        touched_ = touched;
        touchedAt_ = NSRunLoop::now();
    }
    /// Seconds since the last touch; nothing when the page has not been touched.
    std::optional<double> secondsSinceTouch() const {
        return touched_ ? std::optional(NSRunLoop::now() - touchedAt_) : std::nullopt;
    }

private:
    bool touched_ = false;
    double touchedAt_ = 0;
};

}
