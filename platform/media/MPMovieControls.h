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

/// The full-screen controls of a movie: a top bar with Done, elapsed time, position and remaining
/// time, and a bottom bar with play and pause and the volume. While the movie plays, they fade a
/// few seconds after the last touch.
class MPMovieControls : public UIView {
public:
    /// The actions that the controls call.
    struct Actions {
        std::function<void()> done;
        std::function<void()> togglePlay;
        std::function<void(double seconds)> seek;
        std::function<void(double seconds)> scrub; ///< while the position is being dragged
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
    /// Restarts the time until they fade.
    void keepShown();

    void layoutSubviews() override;
    /// The controls do not take touches between the bars.
    bool pointInside(CGPoint point) const override;

private:
    MPMovieControls(CGRect frame, Actions actions);
    void makeTopBar();
    void makeBottomBar();
    /// Connects the parts to `actions_`.
    void connect();
    void fadeIfPlaying();

    Actions actions_;
    State state_;
    bool shown_ = true;
    bool scrubbing_ = false; ///< the position has been dragged and not let go
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

/// "0:07", "12:34", "1:02:03"; fractions of a second are cut off.
std::string MPMovieTimeText(double seconds);

}
