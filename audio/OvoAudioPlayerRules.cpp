#include "audio/OvoAudioPlayerRules.h"

namespace vistrel::OvoAudioPlayerRules {

bool canGoToNextTrack(OvoAudioQueuePosition position) {
    return position.selectedIndex + 1 != position.count;
}

bool canGoToPreviousTrack(OvoAudioQueuePosition position) {
    return position.selectedIndex != 0;
}

bool isNextEnabled(OvoAudioQueuePosition position, OvoAudioPlayModes modes) {
    return modes.repeatOne || modes.repeatAll || modes.shuffle || canGoToNextTrack(position);
}

std::uint32_t nextIndex(OvoAudioQueuePosition position, OvoAudioPlayModes modes, int (*random)()) {
    if (modes.shuffle)
        return static_cast<std::uint32_t>(random()) % position.count;
    if (modes.repeatOne)
        return position.selectedIndex;
    if (canGoToNextTrack(position))
        return position.selectedIndex + 1;
    return modes.repeatAll ? 0 : position.selectedIndex;
}

std::uint32_t previousIndex(OvoAudioQueuePosition position) {
    return canGoToPreviousTrack(position) ? position.selectedIndex - 1 : 0;
}

EndOfTrack afterTrack(OvoAudioQueuePosition position, bool interrupted) {
    if (canGoToNextTrack(position))
        return EndOfTrack::GoToNext;
    return interrupted ? EndOfTrack::PlayAgain : EndOfTrack::Stop;
}

OvoAudioPlayModes withRepeatAdvanced(OvoAudioPlayModes modes) {
    if (modes.repeatOne)
        return {false, false, modes.shuffle};
    return {!modes.repeatAll, modes.repeatAll, modes.shuffle};
}

const char* repeatPicture(OvoAudioPlayModes modes) {
    if (modes.repeatOne)
        return "AudioPlayerRepeatOneOn";
    return modes.repeatAll ? "AudioPlayerRepeatOn" : "AudioPlayerRepeatOff";
}

const char* shufflePicture(OvoAudioPlayModes modes) {
    return modes.shuffle ? "AudioPlayerShuffleOn" : "AudioPlayerShuffleOff";
}

}
