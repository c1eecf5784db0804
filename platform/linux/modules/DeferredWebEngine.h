#pragma once
#include "platform/host/WebEngine.h"
#include "platform/linux/modules/NativeModule.h"
#include "platform/linux/web/WebEngineSetup.h"

#include <memory>

namespace vistrel {

/// The page engine, opened at the first warm-up or page.
class DeferredWebEngine : public host::WebEngine {
public:
    explicit DeferredWebEngine(WebEngineSetup setup);

    std::shared_ptr<host::WebPage> createPage(host::WebSession session) override;
    void warmUp() override;

private:
    host::WebEngine* engine();

    WebEngineSetup setup_;
    NativeModule module_;
    std::shared_ptr<host::WebEngine> engine_;
};

}
