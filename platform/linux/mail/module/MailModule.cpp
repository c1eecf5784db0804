#include "platform/linux/mail/SmtpMailService.h"

extern "C" __attribute__((visibility("default"))) vistrel::MailService*
vistrel_create_mail_service(vistrel::host::EventLoop& loop, vistrel::host::Files& files,
                            const vistrel::SettingLookup& setting) {
    return new vistrel::SmtpMailService(loop, files, setting);
}
