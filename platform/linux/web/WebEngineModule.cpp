#include "platform/linux/web/WebEngineSetup.h"
#include "platform/linux/web/WebKitEngine.h"

extern "C" __attribute__((visibility("default"))) vistrel::host::WebEngine*
vistrel_create_web_engine(const vistrel::WebEngineSetup& setup) {
    return new vistrel::WebKitEngine(setup);
}
