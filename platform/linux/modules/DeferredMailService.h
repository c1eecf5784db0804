#pragma once
#include "platform/linux/mail/MailService.h"
#include "platform/linux/modules/DeferredService.h"

namespace vistrel {

/// The mail service, loaded on first use.
class DeferredMailService : public MailService {
public:
    /// Loop and files must outlive it.
    DeferredMailService(host::EventLoop& loop, host::Files& files, SettingLookup setting,
                        NativeModule::Log log);

    bool canSendMail() override;
    void sendMail(const host::OutgoingMail& mail, std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override;
    host::Status saveDraft(const host::OutgoingMail& mail) override;

private:
    host::EventLoop& loop_;
    DeferredService<MailService, CreateMailService> service_;
};

}
