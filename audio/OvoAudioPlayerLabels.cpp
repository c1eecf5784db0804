#include "audio/OvoAudioPlayerLabels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vistrel::OvoAudioPlayerLabels {

int wholeSeconds(double seconds) {
    if (std::isnan(seconds))
        return 0;
    constexpr double kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(seconds, 0.0, kMost));
}

std::string minutesAndSeconds(int seconds) {
    const std::string rest = std::to_string(seconds % 60);
    return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string elapsed(double currentTime) {
    return minutesAndSeconds(wholeSeconds(currentTime));
}

std::string remaining(double currentTime, double duration) {
    const int left = wholeSeconds(duration) - wholeSeconds(currentTime);
    return "-" + minutesAndSeconds(std::max(left, 0));
}

std::string place(OvoAudioQueuePosition position) {
    return std::to_string(position.selectedIndex + 1) + " of " + std::to_string(position.count);
}

std::string rowNumber(int row) {
    return std::to_string(row + 1) + ".";
}

}
