#pragma once
#include "platform/graphics/UIFont.h"
#include "platform/uikit/UIControl.h"

#include <string>

namespace vistrel {

/// A button of an alert or a sheet: a glassy body in one colour with a title.
class UIGlossyButton : public UIControl {
public:
    struct Look {
        UIColor body;
        UIColor title;
        UIColor shadow; ///< of the title, one point above it
        double fontSize = 18;
        double radius = 7;
    };

    UIGlossyButton(std::string title, const Look& look);

    const std::string& title() const { return title_; }
    /// Marked as the button that Enter presses.
    void setMarked(bool marked);

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    std::string title_;
    Look look_;
    bool marked_ = false;
};

}
