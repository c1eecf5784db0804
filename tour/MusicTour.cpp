#include "tour/MusicTour.h"

#include "audio/OvoAudioPlayerController.h"
#include "downloads/DownloadsFolder.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UITableView.h"
#include "tour/TourHands.h"
#include "tour/TourStage.h"

#include <cmath>
#include <memory>
#include <string>

namespace vistrel {

namespace {

using Role = UIAccessibilityRole;

constexpr const char* kTracks[] = {"short-signal.mp3", "gruesse-aus-koeln.mp3", "old-label.mp3",
                                   "no-label.mp3"};
constexpr double kMovedVolume = 0.35;

std::function<void()> tapOn(Role role, const char* label) {
    return [role, label] {
        TourHands::tap(role, label);
    };
}

bool isPlaying(std::uint32_t index) {
    const auto screen = TourStage::musicPlayer();
    return screen && screen->selectedIndex() == index && screen->player() &&
           screen->player()->isPlaying();
}

bool isTableShown() {
    return TourStage::musicPlayer()->views().songTableView->superview() != nullptr;
}

std::string placeAndTitle() {
    const auto screen = TourStage::musicPlayer();
    return std::to_string(screen->selectedIndex() + 1) + " of " +
           std::to_string(screen->soundFiles().size()) + ", " + screen->views().titleLabel->text();
}

std::string times() {
    const auto& views = TourStage::musicPlayer()->views();
    return views.currentTime->text() + " " + views.duration->text();
}

/// The name shown in the music section's row with that number.
void tapMusicRow(std::size_t number) {
    const auto& names = TourStage::downloadsScreen()->musicFiles();
    if (number < names.size())
        TourHands::tap(Role::Row, std::string(stringByDeletingPathExtension(names[number])));
}

void addTracks(std::vector<TourStep>& steps) {
    steps.push_back({"music-files", "four tracks arrive in the folder",
                     [] {
                         for (const char* name : kTracks)
                             TourStage::fetchFile(std::string("/media/") + name,
                                                  pathOfDownload(name));
                     },
                     [] {
                         for (const char* name : kTracks)
                             if (TourStage::sizeOfFile(pathOfDownload(name)) <= 0)
                                 return false;
                         return true;
                     }});
    steps.push_back({"music-menu",
                     "back to the menu",
                     tapOn(Role::Button, "Vistrel"),
                     [] { return TourStage::isMenuOnTop(); },
                     {},
                     5,
                     0.8});
    steps.push_back({"music-list", "the music is listed", tapOn(Role::Row, "Downloads"),
                     [] { return TourHands::find(Role::Row, "short-signal").has_value(); },
                     [] {
                         const auto& names = TourStage::downloadsScreen()->musicFiles();
                         return std::to_string(names.size()) + " pieces";
                     },
                     5, 0.8});
    steps.push_back({"music-player", "a tap on the second row opens the player on all of them",
                     [] { tapMusicRow(1); }, [] { return isPlaying(1); }, placeAndTitle, 10, 0.8});
}

void addOverlay(std::vector<TourStep>& steps) {
    steps.push_back({"music-overlay", "a tap on the cover shows place and time, which counts",
                     tapOn(Role::Button, "Cover"),
                     [] {
                         const auto screen = TourStage::musicPlayer();
                         return screen && screen->views().overlayView &&
                                screen->views().currentTime->text() != "0:00";
                     },
                     times, 10, 0.3});
    steps.push_back({"music-shuffle", "shuffle is switched on", tapOn(Role::Button, "Shuffle"),
                     [] {
                         return TourStage::musicPlayer()->shuffle();
                     }});
    steps.push_back({"music-repeat-all", "repeat: all", tapOn(Role::Button, "Repeat"),
                     [] {
                         return TourStage::musicPlayer()->repeatAll();
                     }});
    steps.push_back({"music-repeat-one", "repeat: one", tapOn(Role::Button, "Repeat"), [] {
                         return TourStage::musicPlayer()->repeatOne();
                     }});
    steps.push_back({"music-repeat-off", "repeat: off", tapOn(Role::Button, "Repeat"),
                     [] {
                         const auto modes = TourStage::musicPlayer()->modes();
                         return !modes.repeatAll && !modes.repeatOne;
                     }});
    steps.push_back(
        {"music-shuffle-off", "shuffle is switched off", tapOn(Role::Button, "Shuffle"), [] {
             return !TourStage::musicPlayer()->shuffle();
         }});
}

void addTable(std::vector<TourStep>& steps) {
    steps.push_back({"music-flip",
                     "the cover flips, and the small button with it",
                     tapOn(Role::Button, "Tracks"),
                     isTableShown,
                     {},
                     5,
                     0.2});
    steps.push_back({"music-table", "the track table is behind it", {}, isTableShown, {}, 5, 1});
    steps.push_back({"music-third", "a tap on the third row plays it",
                     [] {
                         const auto screen = TourStage::musicPlayer();
                         TourHands::tap(Role::Row, screen->soundFiles()[2]->title());
                     },
                     [] { return isPlaying(2); }, placeAndTitle, 10, 0.8});
    steps.push_back({"music-next", "next", tapOn(Role::Button, "Next"), [] { return isPlaying(3); },
                     placeAndTitle});
    steps.push_back({"music-previous", "previous", tapOn(Role::Button, "Previous"),
                     [] { return isPlaying(2); }, placeAndTitle});
    steps.push_back({"music-cover",
                     "the table turns back to the cover",
                     tapOn(Role::Button, "Tracks"),
                     [] { return !isTableShown(); },
                     {},
                     5,
                     1});
}

float volumeShown() {
    const auto screen = TourStage::musicPlayer();
    return screen ? screen->views().volumeSlider->value() : -1;
}

void addVolume(std::vector<TourStep>& steps) {
    const auto percent = [] {
        return std::to_string(std::lround(volumeShown() * 100)) + " %";
    };
    const auto isMoved = [] {
        return std::abs(static_cast<double>(volumeShown()) - kMovedVolume) < 0.1;
    };
    steps.push_back(
        {"music-volume", "the volume is turned down",
         [] {
             const auto slider = TourHands::find(Role::Slider, "Volume");
             if (!slider)
                 return;
             const CGRect place = slider->frame;
             const CGRect knob = TourStage::musicPlayer()->views().volumeSlider->thumbRect();
             TourHands::drag({place.minX() + knob.midX(), place.midY()},
                             {place.minX() + place.size.width * kMovedVolume, place.midY()}, 0.3);
         },
         isMoved, percent, 5, 0.4});
    steps.push_back({"music-closed",
                     "Done closes the player",
                     tapOn(Role::Button, "Done"),
                     [] {
                         return !TourStage::musicPlayer() &&
                                TourHands::find(Role::Row, "short-signal").has_value();
                     },
                     {},
                     8,
                     0.8});
    steps.push_back({"music-remembered", "opened again, the volume is remembered",
                     [] { tapMusicRow(3); }, [isMoved] { return isPlaying(3) && isMoved(); },
                     percent, 10, 0.8});
}

void addEnd(std::vector<TourStep>& steps) {
    steps.push_back({"music-end", "the last track ends, and the music with it",
                     [] {
                         const auto& player = TourStage::musicPlayer()->player();
                         player->setCurrentTime(player->duration() - 1);
                     },
                     [] {
                         const auto screen = TourStage::musicPlayer();
                         return screen && !screen->updateTimer() && !isPlaying(3) &&
                                TourHands::find(Role::Button, "Play").has_value();
                     },
                     placeAndTitle, 10, 0.5});
    steps.push_back({"music-done",
                     "Done; the list is back",
                     tapOn(Role::Button, "Done"),
                     [] {
                         return !TourStage::musicPlayer() &&
                                TourHands::find(Role::Row, "short-signal").has_value();
                     },
                     {},
                     8,
                     0.8});
}

}

std::vector<TourStep> musicTour() {
    for (const char* name : kTracks)
        (void)NSFileManager::defaultManager().removeItemAtPath(pathOfDownload(name));
    NSUserDefaults::standardUserDefaults().removeObjectForKey(kPlayerVolumeKey);
    std::vector<TourStep> steps;
    addTracks(steps);
    addOverlay(steps);
    addTable(steps);
    addVolume(steps);
    addEnd(steps);
    return steps;
}

}
