#include "platform/media/AudioServices.h"

#include "platform/host/Desktop.h"
#include "platform/host/Host.h"

namespace vistrel {

void AudioServicesPlaySystemSound(SystemSoundID sound) {
    if (sound == kSystemSoundID_Vibrate)
        host::current().desktop->vibrate();
}

}
