#pragma once
#include "platform/host/Desktop.h"
#include "platform/host/EventLoop.h"
#include "platform/host/Files.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/mail/MailAccount.h"
#include "platform/linux/mail/MailMessage.h"

#include <gio/gio.h>

#include <functional>
#include <optional>

namespace vistrel {

/// Outgoing mail: sends through the configured account, keeps drafts on the device.
class MailService {
public:
    /// Where drafts lie on the device.
    static constexpr const char* kDraftsFolder = "/var/mobile/Library/Mail/Drafts";

    /// Loop and files must outlive it. The settings are read once.
    MailService(host::EventLoop& loop, host::Files& files, const SettingLookup& setting);
    ~MailService();
    MailService(const MailService&) = delete;
    MailService& operator=(const MailService&) = delete;

    bool canSendMail() const { return account_.has_value(); }
    /// `done` runs once, on the loop, never before this has returned.
    void sendMail(const host::OutgoingMail& mail, std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done);
    host::Status saveDraft(const host::OutgoingMail& mail);

private:
    using Done = std::function<void(host::Status)>;
    void failLater(host::Failure failure, Done done);

    host::EventLoop& loop_;
    host::Files& files_;
    std::optional<MailAccount> account_;
    NativeReference<GCancellable> cancellable_;
};

}
