#pragma once
#include "platform/uikit/UIControl.h"

namespace vistrel {

/// The button that plays and pauses. Shows what a press does.
class MPMovieTransportButton : public UIControl {
public:
    explicit MPMovieTransportButton(CGRect frame = {});

    void setPlaying(bool playing);
    void setHighlighted(bool highlighted) override;

    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    bool playing_ = false;
};

}
