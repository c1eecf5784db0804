#include "platform/linux/web/WebEngineSetup.h"
#include "platform/linux/web/WebKitEngine.h"

extern "C" __attribute__((visibility("default"))) void
vistrel_create_web_engine(const vistrel::WebEngineSetup& setup,
                          std::shared_ptr<vistrel::host::WebEngine>& engine) {
    engine = std::make_shared<vistrel::WebKitEngine>(setup);
}
