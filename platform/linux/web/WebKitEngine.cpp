#include "platform/linux/web/WebKitEngine.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/web/PageScripts.h"
#include "platform/linux/web/WebKitPage.h"

#include <utility>

namespace vistrel {

WebKitEngine::WebKitEngine(const WebEngineSetup& setup)
    : setup_(setup) {}

WebKitSession& WebKitEngine::session(host::WebSession kind) {
    auto& session = kind == host::WebSession::Guest ? guest_ : browsing_;
    if (!session)
        session = kind == host::WebSession::Guest ? WebKitSession::guest()
                                                  : WebKitSession::browsing(setup_);
    return *session;
}

std::shared_ptr<host::WebPage> WebKitEngine::createPage(host::WebSession kind) {
    WebKitSession& owner = session(kind);
    if (kind == host::WebSession::Guest)
        return WebKitPage::with(owner.makeView(), nullptr);
    auto view = spare_ ? std::exchange(spare_, {}) : owner.makeView();
    // A page that comes before the warm-up makes a spare one needless: it would cost a process.
    spareStarted_ = true;
    return WebKitPage::with(std::move(view), owner.cookies());
}

void WebKitEngine::warmUp() {
    if (!std::exchange(warmingUp_, true))
        warmUpLater();
}

void WebKitEngine::warmUpLater() {
    callLater(weakly(this, &WebKitEngine::warmUpStep), 0, G_PRIORITY_LOW);
}

void WebKitEngine::warmUpStep() {
    if (!browsing_) {
        session(host::WebSession::Browsing);
        warmUpLater();
    } else if (!std::exchange(spareStarted_, true)) {
        spare_ = browsing_->makeView();
        warmUpLater();
    } else if (spare_) {
        PageScripts::startProcess(spare_.get());
    }
}

}
