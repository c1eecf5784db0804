#pragma once
#include "platform/host/Desktop.h"
#include "platform/linux/mail/MailAccount.h"

#include <functional>

namespace vistrel {
namespace host {
class EventLoop;
class Files;
}

/// Outgoing mail.
class MailService {
public:
    /// Where drafts lie on the device.
    static constexpr const char* kDraftsFolder = "/var/mobile/Library/Mail/Drafts";

    virtual ~MailService() = default;
    /// Whether an account is configured.
    virtual bool canSendMail() = 0;
    /// `done` runs once, on the loop, never before this has returned.
    virtual void sendMail(const host::OutgoingMail& mail,
                          std::function<void(double fraction)> progress,
                          std::function<void(host::Status)> done) = 0;
    virtual host::Status saveDraft(const host::OutgoingMail& mail) = 0;
};

/// The entry point of the mail module. Loop and files must outlive what it returns, which the
/// caller owns. The settings are read once.
using CreateMailService = MailService* (*)(host::EventLoop& loop, host::Files& files,
                                           const SettingLookup& setting);
inline constexpr const char* kCreateMailServiceSymbol = "vistrel_create_mail_service";

}
