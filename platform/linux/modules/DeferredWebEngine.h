#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/modules/DeferredService.h"
#include "platform/linux/web/WebEngineSetup.h"

#include <memory>
#include <thread>

namespace vistrel {

/// The page engine, loaded by the first warm-up or page.
class DeferredWebEngine : public host::WebEngine {
public:
    explicit DeferredWebEngine(const WebEngineSetup& setup);

    std::shared_ptr<host::WebPage> createPage(host::WebSession session) override;
    void warmUp() override;
    /// Has the system read the engine's library, so that loading it does not wait for a slow disk.
    /// That takes no memory of this process.
    void readAhead();

private:
    DeferredService<host::WebEngine, CreateWebEngine> engine_;
    std::jthread reading_;
};

}
