#pragma once
#include "platform/host/Media.h"
#include "platform/media/MPMovieControls.h"
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {

/// A movie player's view: its picture, as large as fits without distortion, on black, with the
/// controls above it. A touch on the picture shows or hides the controls; Space plays and pauses,
/// left and right seek by ten seconds and Home to the beginning, up and down change the volume, and
/// Escape works like Done.
class MPMovieView : public UIView {
public:
    MPMovieView(CGRect frame, MPMovieControls::Actions actions);

    /// Null for no picture. Not owned; must be cleared before the player is destroyed.
    void setPlayback(host::MoviePlayback* playback);
    void setControlsWanted(bool wanted);
    /// Updates position, volume and picture size from the player.
    void refresh(bool playing);
    MPMovieControls& controls() { return *controls_; }

    void layoutSubviews() override;
    void touchesEnded(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    bool canBecomeFirstResponder() const override { return true; }
    void didMoveToWindow() override;

private:
    class Picture;
    MPMovieControls::Actions actions_;
    host::MoviePlayback* playback_ = nullptr;
    std::shared_ptr<Picture> picture_;
    std::shared_ptr<MPMovieControls> controls_;
    CGSize pictureSize_;
};

}
