#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/modules/DeferredService.h"
#include "platform/linux/web/WebEngineSetup.h"

#include <memory>

namespace vistrel {

/// The page engine, loaded by the first warm-up or page.
class DeferredWebEngine : public host::WebEngine {
public:
    explicit DeferredWebEngine(const WebEngineSetup& setup);

    std::shared_ptr<host::WebPage> createPage(host::WebSession session) override;
    void warmUp() override;

private:
    DeferredService<host::WebEngine, CreateWebEngine> engine_;
};

}
