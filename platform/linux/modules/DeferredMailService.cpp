#include "platform/linux/modules/DeferredMailService.h"

#include "platform/host/EventLoop.h"

#include <cerrno>
#include <utility>

namespace vistrel {

namespace {
host::Failure missing() {
    return {ENOSYS, "The mail module is not installed."};
}
}

DeferredMailService::DeferredMailService(host::EventLoop& loop, host::Files& files,
                                         SettingLookup setting, NativeModule::Log log)
    : loop_(loop)
    , files_(files)
    , setting_(std::move(setting))
    , module_("vistrel-mail.so", std::move(log)) {}

MailService* DeferredMailService::service() {
    if (!service_)
        if (auto create =
                reinterpret_cast<CreateMailService>(module_.symbol(kCreateMailServiceSymbol)))
            service_.reset(create(loop_, files_, setting_));
    return service_.get();
}

bool DeferredMailService::canSendMail() {
    return service() && service_->canSendMail();
}

void DeferredMailService::sendMail(const host::OutgoingMail& mail,
                                   std::function<void(double fraction)> progress,
                                   std::function<void(host::Status)> done) {
    if (service())
        service_->sendMail(mail, std::move(progress), std::move(done));
    else
        loop_.schedule(0, [done = std::move(done)] { done(missing()); });
}

host::Status DeferredMailService::saveDraft(const host::OutgoingMail& mail) {
    if (!service())
        return missing();
    return service_->saveDraft(mail);
}

}
