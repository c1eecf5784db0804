#pragma once
#include <cstdint>

namespace vistrel {

using SystemSoundID = std::uint32_t;

/// The only system sound that the layer knows: the device shakes, where it can.
inline constexpr SystemSoundID kSystemSoundID_Vibrate = 4095;

void AudioServicesPlaySystemSound(SystemSoundID sound);

}
