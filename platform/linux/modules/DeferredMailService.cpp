#include "platform/linux/modules/DeferredMailService.h"

#include "platform/host/EventLoop.h"

#include <utility>

namespace vistrel {

DeferredMailService::DeferredMailService(host::EventLoop& loop, host::Files& files,
                                         SettingLookup setting, NativeModule::Log log)
    : loop_(loop)
    , service_("mail", std::move(log), kCreateMailServiceSymbol,
               [&loop, &files, setting = std::move(setting)](CreateMailService create) {
                   return std::shared_ptr<MailService>(create(loop, files, setting));
               }) {}

bool DeferredMailService::canSendMail() {
    auto* service = service_.get();
    return service && service->canSendMail();
}

void DeferredMailService::sendMail(const host::OutgoingMail& mail,
                                   std::function<void(double fraction)> progress,
                                   std::function<void(host::Status)> done) {
    if (auto* service = service_.get())
        service->sendMail(mail, std::move(progress), std::move(done));
    else
        loop_.schedule(
            0, [done = std::move(done), missing = service_.missing()] { done(missing); });
}

host::Status DeferredMailService::saveDraft(const host::OutgoingMail& mail) {
    auto* service = service_.get();
    return service ? service->saveDraft(mail) : service_.missing();
}

}
