#pragma once
#include <cstdint>

namespace vistrel {

/// How the music player goes through its queue. Repeating one and repeating all exclude each other;
/// shuffling is apart from both.
struct OvoAudioPlayModes {
    bool repeatAll = false;
    bool repeatOne = false;
    bool shuffle = false;
    friend bool operator==(const OvoAudioPlayModes&, const OvoAudioPlayModes&) = default;
};

/// Where the player stands in its queue.
struct OvoAudioQueuePosition {
    std::uint32_t selectedIndex = 0;
    std::uint32_t count = 0;
};

/// The music player's decisions, apart from any player or view.
namespace OvoAudioPlayerRules {

/// Both look at the position alone, not at the modes.
bool canGoToNextTrack(OvoAudioQueuePosition position);
bool canGoToPreviousTrack(OvoAudioQueuePosition position);

/// The next button works at the end of the queue, too, when a mode says where to go from there.
bool isNextEnabled(OvoAudioQueuePosition position, OvoAudioPlayModes modes);

/// `random` is asked only while shuffling, and may choose the same track again. Past the end of the
/// queue, without a mode, the index stays.
std::uint32_t nextIndex(OvoAudioQueuePosition position, OvoAudioPlayModes modes, int (*random)());
/// Stays at the first track.
std::uint32_t previousIndex(OvoAudioQueuePosition position);

enum class EndOfTrack { GoToNext, PlayAgain, Stop };
/// What follows a track that has played to its end. The queue never wraps by itself.
EndOfTrack afterTrack(OvoAudioQueuePosition position, bool interrupted);

/// Off, all, one, off.
OvoAudioPlayModes withRepeatAdvanced(OvoAudioPlayModes modes);

/// Names of the buttons' pictures.
const char* repeatPicture(OvoAudioPlayModes modes);
const char* shufflePicture(OvoAudioPlayModes modes);

}
}
