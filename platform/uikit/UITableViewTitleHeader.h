#pragma once
#include "platform/uikit/UILabel.h"

#include <string>

namespace vistrel {

/// A section's title on a dark translucent bar. Takes touches, so that they do not reach the row
/// under it.
class UITableViewTitleHeader : public UILabel {
public:
    explicit UITableViewTitleHeader(std::string title);
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override {
        return {UIAccessibilityRole::Heading, text(), {}, true};
    }
};

}
