#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/host/Media.h"

#include <memory>

namespace vistrel {
class MPMovieRemote;
class MPMovieView;
class NSTimer;
class UIView;

inline constexpr const char* MPMoviePlayerLoadStateDidChangeNotification =
    "MPMoviePlayerLoadStateDidChangeNotification";
inline constexpr const char* MPMoviePlayerContentPreloadDidFinishNotification =
    "MPMoviePlayerContentPreloadDidFinishNotification";
inline constexpr const char* MPMoviePlayerPlaybackDidFinishNotification =
    "MPMoviePlayerPlaybackDidFinishNotification";
inline constexpr const char* MPMoviePlayerPlaybackDidFinishReasonUserInfoKey =
    "MPMoviePlayerPlaybackDidFinishReasonUserInfoKey";

/// The numbers are the phone's.
enum class MPMovieFinishReason { PlaybackEnded = 0, PlaybackError = 1, UserExited = 2 };
enum class MPMovieControlStyle { None = 0, Embedded = 1, Fullscreen = 2 };
enum MPMovieLoadState : unsigned {
    MPMovieLoadStateUnknown = 0,
    MPMovieLoadStatePlayable = 1,
    MPMovieLoadStatePlaythroughOK = 2,
    MPMovieLoadStateStalled = 4
};

/// Plays one local or remote video with full-screen controls: Done, play and pause, position with
/// seeking, elapsed and remaining time, volume. The controls fade after a few seconds and return on
/// a touch. The screen stays awake while the video plays, and media keys control it. Ends with one
/// playback-finished notification.
class MPMoviePlayerController : public std::enable_shared_from_this<MPMoviePlayerController>,
                                private host::PlaybackClient {
public:
    /// Beyond the phone: prepares for a film that is likely to be played soon.
    static void prepareEngine();

    /// The interface that the player offers: load states and an embeddable view, or only the
    /// preload notification.
    enum class Interface { LoadStates, Preload };
    /// Applies to players created from now on; the newer one is the default.
    static void setOfferedInterface(Interface offered);

    /// With the older interface, the content is preloaded at once.
    static std::shared_ptr<MPMoviePlayerController> withContentURL(const NSURL& url);
    ~MPMoviePlayerController() override;

    /// respondsToSelector: loadState.
    bool offersLoadState() const { return interface_ == Interface::LoadStates; }
    unsigned loadState() const { return loadState_; }
    void setControlStyle(MPMovieControlStyle style);
    /// Full screen hides the status bar.
    void setFullscreen(bool fullscreen);
    std::shared_ptr<UIView> view();
    void prepareToPlay();
    /// With the older interface, the player shows itself full screen in landscape.
    void play();
    void pause();
    bool isPlaying() const { return playing_; }
    /// 0 to 1.
    float volume() const;
    void setVolume(float volume);
    /// Ends without a notification.
    void stop();
    double currentPlaybackTime() const;
    void setCurrentPlaybackTime(double seconds);
    /// Beyond the phone: shows a picture near the position while it is being dragged.
    /// setCurrentPlaybackTime ends it.
    void scrubTo(double seconds);
    double duration() const;
    unsigned framesShown() const;

private:
    explicit MPMoviePlayerController(const NSURL& url);
    void playbackDidBecomeReady() override;
    void playbackStalled(bool stalled) override;
    void playbackDidEnd() override;
    void playbackDidFail(const std::string& message) override;
    void playbackInterrupted(bool begins) override;
    void makeView();
    void showByItself();
    void setLoadState(unsigned state);
    void togglePlay();
    void setPlaying(bool playing);
    void refreshView();
    void finish(MPMovieFinishReason reason);
    void end();

    const NSURL url_;
    Interface interface_;
    unsigned loadState_ = MPMovieLoadStateUnknown;
    bool playing_ = false;
    bool finished_ = false;
    double durationAtEnd_ = 0;
    bool showsItself_ = false;
    std::shared_ptr<host::MoviePlayback> playback_;
    std::shared_ptr<MPMovieView> view_;
    std::unique_ptr<MPMovieRemote> remote_; ///< once it has played
    std::shared_ptr<NSTimer> refreshTimer_;
};

}
