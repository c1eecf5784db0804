#pragma once
#include "audio/OvoAudioFile.h"
#include "audio/OvoAudioPlayerRules.h"
#include "audio/OvoAudioPlayerViews.h"
#include "platform/media/AVAudioPlayerDelegate.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class AVAudioPlayer;
class NSTimer;
class OvoAudioFileReading;
class OvoAudioPlayerRemote;
class UISlider;
class UITableViewCell;

/// Where the volume slider's value is stored.
inline constexpr const char* kPlayerVolumeKey = "PlayerVolume";

/// The music player: plays a queue of files one after another, with shuffle and repeat, cover and
/// track table. A new player is made for each track; if the track's file cannot be opened, there is
/// no player, requests to it do nothing, and its time, length and volume are 0. Present the
/// controller modally: it starts to play when it has appeared and stops when it disappears.
class OvoAudioPlayerController : public UIViewController,
                                 public UITableViewDataSource,
                                 public UITableViewDelegate,
                                 public AVAudioPlayerDelegate {
public:
    using SoundFiles = std::vector<std::shared_ptr<OvoAudioFile>>;

    /// Needs at least one file and a valid index. Builds the screen at once.
    static std::shared_ptr<OvoAudioPlayerController>
    withSoundFilesAtPathAndSelectedIndex(SoundFiles soundFiles, std::string path,
                                         std::uint32_t selectedIndex);
    ~OvoAudioPlayerController() override;

    const SoundFiles& soundFiles() const { return soundFiles_; }
    const std::string& soundFilesPath() const { return soundFilesPath_; }
    std::uint32_t selectedIndex() const { return selectedIndex_; }
    const std::shared_ptr<AVAudioPlayer>& player() const { return player_; }
    const std::shared_ptr<NSTimer>& updateTimer() const { return updateTimer_; }
    const OvoAudioPlayerViews& views() const { return views_; }
    OvoAudioPlayModes modes() const { return modes_; }
    bool repeatAll() const { return modes_.repeatAll; }
    bool repeatOne() const { return modes_.repeatOne; }
    bool shuffle() const { return modes_.shuffle; }
    bool interrupted() const { return interrupted_; }
    void setInterrupted(bool interrupted) { interrupted_ = interrupted; }

    /// Pauses when playing, otherwise plays.
    void play();
    /// Follows the modes; without one, does nothing at the end of the queue.
    void next();
    void previous();
    bool canGoToNextTrack() const;
    bool canGoToPreviousTrack() const;
    /// Whether the next button is enabled.
    bool canGoOnToNext() const;
    void toggleShuffle();
    /// Off, all, one, off.
    void toggleRepeat();
    /// Sets the volume and stores it for the next time the screen opens.
    void volumeSliderMoved(const UISlider& slider);
    void progressSliderMoved(const UISlider& slider);
    void dismissAudioPlayer();

    // The display. All values of a null player are 0.
    void updateCurrentTime();
    void updateCurrentTimeForPlayer(AVAudioPlayer* player);
    void updateViewForPlayerInfo(AVAudioPlayer* player);
    void updateViewForPlayerState(AVAudioPlayer* player);
    /// Fades the overlay in, or out if it is shown.
    void showOverlayView();
    /// Flips between the cover and the track table.
    void showSongFiles();

    void loadView() override;
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void viewDidUnload() override;
    bool escapePressed() override;

    void audioPlayerDidFinishPlayingSuccessfully(AVAudioPlayer& player, bool flag) override;
    void audioPlayerDecodeErrorDidOccurError(AVAudioPlayer& player, const NSError& error) override;
    void audioPlayerBeginInterruption(AVAudioPlayer& player) override;
    void audioPlayerEndInterruption(AVAudioPlayer& player) override;

    int numberOfSectionsInTableView(UITableView& tableView) override;
    int tableViewNumberOfRowsInSection(UITableView& tableView, int section) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                          const NSIndexPath& indexPath) override;
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView& tableView,
                                                           const NSIndexPath& indexPath) override;
    std::optional<bool> tableViewCanEditRowAtIndexPath(UITableView& tableView,
                                                       const NSIndexPath& indexPath) override;

private:
    OvoAudioPlayerController(SoundFiles soundFiles, std::string path, std::uint32_t selectedIndex);
    const OvoAudioFile& selectedFile() const { return *soundFiles_[selectedIndex_]; }
    OvoAudioQueuePosition position() const;
    bool isTableShown() const;

    /// Null when the selected file cannot be opened, which is logged.
    std::shared_ptr<AVAudioPlayer> makePlayer();
    void startPlayer();
    void changeTrack(std::uint32_t index);
    /// Tells screen readers which track plays.
    void announceTrack() const;
    void refreshDisplay();
    void stopTimer();
    void connectViews();
    void startAudioSession();
    void showCover();
    void markSelectedRow();
    void makeOverlay();
    void fadeOverlay(bool in);
    void overlayHasFaded();
    void showModes();
    void flipToTable();
    void flipToCover();

    SoundFiles soundFiles_;
    std::string soundFilesPath_;
    std::uint32_t selectedIndex_;
    std::shared_ptr<AVAudioPlayer> player_;
    OvoAudioPlayerViews views_;
    std::shared_ptr<NSTimer> updateTimer_;
    std::unique_ptr<OvoAudioFileReading> reading_;
    std::unique_ptr<OvoAudioPlayerRemote> remote_; ///< while on screen
    OvoAudioPlayModes modes_;
    bool interrupted_ = false;
    bool overlayIsLeaving_ = false; ///< fading out, not yet removed
};

/// The audio session's callback; the screen is its client data.
void interruptionListenerCallback(void* inClientData, std::uint32_t interruptionState);

}
