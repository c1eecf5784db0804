#include "platform/linux/media/GstMedia.h"
#include "platform/linux/media/MediaSetup.h"

extern "C" __attribute__((visibility("default"))) vistrel::host::Media*
vistrel_create_media(const vistrel::MediaSetup& setup) {
    return new vistrel::GstMedia(setup);
}
