#include "platform/linux/modules/DeferredWebEngine.h"

#include <utility>

namespace vistrel {

DeferredWebEngine::DeferredWebEngine(WebEngineSetup setup)
    : setup_(std::move(setup))
    , module_("vistrel-web.so", setup_.log) {}

host::WebEngine* DeferredWebEngine::engine() {
    if (!engine_)
        if (auto create = reinterpret_cast<CreateWebEngine>(module_.symbol(kCreateWebEngineSymbol)))
            create(setup_, engine_);
    return engine_.get();
}

std::shared_ptr<host::WebPage> DeferredWebEngine::createPage(host::WebSession session) {
    return engine() ? engine_->createPage(session) : nullptr;
}

void DeferredWebEngine::warmUp() {
    if (engine())
        engine_->warmUp();
}

}
