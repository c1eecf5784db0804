#pragma once
#include "platform/host/EventLoop.h"
#include "platform/host/Files.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/mail/MailAccount.h"
#include "platform/linux/mail/MailMessage.h"
#include "platform/linux/mail/MailService.h"

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vistrel {
class CurlLoop;
class SmtpDelivery;

/// Sends through the configured account, keeps drafts on the device.
class SmtpMailService : public MailService {
public:
    /// Loop and files must outlive it. The settings are read once.
    SmtpMailService(host::EventLoop& loop, host::Files& files, const SettingLookup& setting);
    ~SmtpMailService() override;
    SmtpMailService(const SmtpMailService&) = delete;
    SmtpMailService& operator=(const SmtpMailService&) = delete;

    bool canSendMail() override { return account_.has_value(); }
    void sendMail(const host::OutgoingMail& mail, std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override;
    host::Status saveDraft(const host::OutgoingMail& mail) override;

private:
    using Done = std::function<void(host::Status)>;
    void deliver(std::string password, MailMessage message,
                 std::function<void(double fraction)> progress, Done done);
    void failLater(host::Failure failure, Done done);

    host::EventLoop& loop_;
    host::Files& files_;
    std::optional<MailAccount> account_;
    NativeReference<GCancellable> cancellable_; ///< of the search for a password
    std::shared_ptr<CurlLoop> curl_;
    std::vector<std::shared_ptr<SmtpDelivery>> deliveries_; ///< under way
};

}
