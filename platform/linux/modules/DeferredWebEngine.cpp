#include "platform/linux/modules/DeferredWebEngine.h"

#include <utility>

namespace vistrel {

DeferredWebEngine::DeferredWebEngine(WebEngineSetup setup)
    : setup_(std::move(setup))
    , module_("vistrel-web.so", setup_.log) {}

host::WebEngine* DeferredWebEngine::engine() {
    if (!engine_)
        if (auto create = reinterpret_cast<CreateWebEngine>(module_.symbol(kCreateWebEngineSymbol)))
            engine_.reset(create(setup_));
    return engine_.get();
}

std::unique_ptr<host::WebPage> DeferredWebEngine::createPage() {
    return engine() ? engine_->createPage() : nullptr;
}

void DeferredWebEngine::warmUp() {
    if (engine())
        engine_->warmUp();
}

}
