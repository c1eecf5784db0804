#pragma once
#include "platform/host/Media.h"
#include "platform/media/MPMovieControls.h"
#include "platform/uikit/UIView.h"

#include <memory>

namespace vistrel {

/// What a movie player shows: its picture, as large as fits with its own proportions, on black,
/// and the controls above it. A touch on the picture brings the controls or takes them away;
/// Space plays and pauses, left and right move by ten seconds, up and down change the volume,
/// Escape is Done.
class MPMovieView : public UIView {
public:
    MPMovieView(CGRect frame, MPMovieControls::Actions actions);

    /// Null: no picture. Not owned; cleared before the player goes.
    void setPlayback(host::MoviePlayback* playback);
    void setControlsWanted(bool wanted);
    /// Takes position, volume and picture size from the player.
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
