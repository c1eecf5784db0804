#pragma once
#include "audio/OvoAudioPlayerRules.h"

#include <string>

namespace vistrel {

/// The texts that the music player shows of times and places.
namespace OvoAudioPlayerLabels {

/// Truncated toward zero; what is no time counts as 0.
int wholeSeconds(double seconds);
/// Minutes, not folded into hours, and two-digit seconds.
std::string minutesAndSeconds(int seconds);

std::string elapsed(double currentTime);
/// With a leading minus sign. Of the whole seconds of both, so that the two labels always add up.
std::string remaining(double currentTime, double duration);
/// "3 of 12".
std::string place(OvoAudioQueuePosition position);
/// A row's number: "3.".
std::string rowNumber(int row);

}
}
