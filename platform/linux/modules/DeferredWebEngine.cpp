#include "platform/linux/modules/DeferredWebEngine.h"

#include <fcntl.h>
#include <unistd.h>

namespace vistrel {

DeferredWebEngine::DeferredWebEngine(const WebEngineSetup& setup)
    : engine_("web", setup.log, kCreateWebEngineSymbol, [setup](CreateWebEngine create) {
        std::shared_ptr<host::WebEngine> engine;
        create(setup, engine);
        return engine;
    }) {}

std::shared_ptr<host::WebPage> DeferredWebEngine::createPage(host::WebSession session) {
    auto* engine = engine_.get();
    return engine ? engine->createPage(session) : nullptr;
}

void DeferredWebEngine::warmUp() {
    if (auto* engine = engine_.get())
        engine->warmUp();
}

void DeferredWebEngine::readAhead() {
    reading_ = std::jthread([] {
        const int file = open(VISTREL_PAGE_ENGINE, O_RDONLY | O_CLOEXEC);
        if (file < 0)
            return;
        posix_fadvise(file, 0, 0, POSIX_FADV_WILLNEED);
        close(file);
    });
}

}
