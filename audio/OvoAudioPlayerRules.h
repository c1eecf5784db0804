#pragma once
#include <cstdint>

namespace vistrel {

/// How the music player goes through its queue. Repeating one and repeating all exclude each other;
/// shuffling is independent of both.
struct OvoAudioPlayModes {
    bool repeatAll = false;
    bool repeatOne = false;
    bool shuffle = false;
    friend bool operator==(const OvoAudioPlayModes&, const OvoAudioPlayModes&) = default;
};

/// The player's position in its queue.
struct OvoAudioQueuePosition {
    std::uint32_t selectedIndex = 0;
    std::uint32_t count = 0;
};

/// The music player's decisions, independent of players and views.
namespace OvoAudioPlayerRules {

/// Both depend on the position alone, not on the modes.
bool canGoToNextTrack(OvoAudioQueuePosition position);
bool canGoToPreviousTrack(OvoAudioQueuePosition position);

/// At the end of the queue, the next button is enabled if a mode determines where to go.
bool isNextEnabled(OvoAudioQueuePosition position, OvoAudioPlayModes modes);

/// `random` is called only while shuffling and may choose the same track again. At the end of the
/// queue, without a mode, the index does not change.
std::uint32_t nextIndex(OvoAudioQueuePosition position, OvoAudioPlayModes modes, int (*random)());
/// Stays at the first track.
std::uint32_t previousIndex(OvoAudioQueuePosition position);

enum class EndOfTrack { GoToNext, PlayAgain, Stop };
/// What happens after a track has played to its end. The queue never wraps by itself.
EndOfTrack afterTrack(OvoAudioQueuePosition position, bool interrupted);

/// Off, all, one, off.
OvoAudioPlayModes withRepeatAdvanced(OvoAudioPlayModes modes);

/// The names of the buttons' pictures.
const char* repeatPicture(OvoAudioPlayModes modes);
const char* shufflePicture(OvoAudioPlayModes modes);

}
}
