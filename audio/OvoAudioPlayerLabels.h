#pragma once
#include "audio/OvoAudioPlayerRules.h"

#include <string>

namespace vistrel {

/// The music player's texts for times and positions.
namespace OvoAudioPlayerLabels {

/// Truncated toward zero; 0 for NaN.
int wholeSeconds(double seconds);
/// Minutes, also above 59, and two-digit seconds.
std::string minutesAndSeconds(int seconds);

std::string elapsed(double currentTime);
/// With a leading minus sign. The difference of the whole seconds, so that the two labels always
/// add up.
std::string remaining(double currentTime, double duration);
/// "3 of 12".
std::string place(OvoAudioQueuePosition position);
/// A row's number: "3.".
std::string rowNumber(int row);

}
}
