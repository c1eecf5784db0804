#pragma once
#include <cstdint>

namespace vistrel {

using SystemSoundID = std::uint32_t;

/// The only supported system sound: the device vibrates if it can.
inline constexpr SystemSoundID kSystemSoundID_Vibrate = 4095;

void AudioServicesPlaySystemSound(SystemSoundID sound);

}
