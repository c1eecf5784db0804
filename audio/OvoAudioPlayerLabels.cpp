#include "audio/OvoAudioPlayerLabels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace vistrel::OvoAudioPlayerLabels {

int wholeSeconds(double seconds) {
    if (std::isnan(seconds))
        return 0;
    constexpr double kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(seconds, 0.0, kMost));
}

std::string minutesAndSeconds(int seconds) {
    std::array<char, 24> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%d:%02d", seconds / 60, seconds % 60);
    return {text.data(), static_cast<std::size_t>(length)};
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
