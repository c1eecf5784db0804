#pragma once
#include "ads/Object/GADPrivateObject.h"
#include "platform/foundation/NSRunLoop.h"

#include <optional>

namespace vistrel {

/// The private half of a GADWebView.
class GADWebViewPrivate : public GADPrivateObject {
public:
    bool touched() const { return touchedAt_.has_value(); }
    void touch() { touchedAt_ = NSRunLoop::now(); }
    void forgetTouch() { touchedAt_.reset(); }
    /// Seconds since the last touch; nothing when the page has not been touched.
    std::optional<double> secondsSinceTouch() const {
        return touchedAt_ ? std::optional(NSRunLoop::now() - *touchedAt_) : std::nullopt;
    }

private:
    std::optional<double> touchedAt_;
};

}
