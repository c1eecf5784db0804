#pragma once
#include "platform/uikit/UIView.h"

#include <functional>
#include <memory>

namespace vistrel {
class MPMovieTransportButton;
class NSTimer;
class UIButton;
class UILabel;
class UISlider;

/// The full-screen controls of a movie: a bar at the top with Done, elapsed time, position and
/// remaining time, a bar at the bottom with play and pause and the volume. They fade a few seconds
/// after the last touch while the movie plays.
class MPMovieControls : public UIView {
public:
    /// What the controls ask of the player.
    struct Actions {
        std::function<void()> done;
        std::function<void()> togglePlay;
        std::function<void(double seconds)> seek;
        std::function<void(float volume)> setVolume;
    };
    struct State {
        double elapsed = 0;  ///< seconds
        double duration = 0; ///< seconds; 0 while unknown
        float volume = 1;
        bool playing = false;
    };

    static std::shared_ptr<MPMovieControls> withActions(CGRect frame, Actions actions);
    ~MPMovieControls() override;

    void update(const State& state);
    bool areShown() const { return shown_; }
    void show();
    void hide();
    /// Restarts the few seconds.
    void keepShown();

    void layoutSubviews() override;
    /// Touches between the bars are not the controls'.
    bool pointInside(CGPoint point) const override;

private:
    MPMovieControls(CGRect frame, Actions actions);
    void makeTopBar();
    void makeBottomBar();
    /// Has the parts report to `actions_`.
    void connect();
    void fadeIfPlaying();

    Actions actions_;
    State state_;
    bool shown_ = true;
    std::shared_ptr<NSTimer> fadeTimer_;
    std::shared_ptr<UIView> topBar_;
    std::shared_ptr<UIView> bottomBar_;
    std::shared_ptr<UIButton> doneButton_;
    std::shared_ptr<UILabel> elapsed_;
    std::shared_ptr<UILabel> remaining_;
    std::shared_ptr<UISlider> position_;
    std::shared_ptr<UISlider> volume_;
    std::shared_ptr<MPMovieTransportButton> transport_;
};

/// "0:07", "12:34", "1:02:03"; a fraction of a second does not count.
std::string MPMovieTimeText(double seconds);

}
