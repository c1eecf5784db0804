#include "platform/linux/mail/SmtpMailService.h"

#include "platform/linux/curl/CurlLoop.h"
#include "platform/linux/mail/MailPassword.h"
#include "platform/linux/mail/SmtpDelivery.h"

#include <cerrno>
#include <span>
#include <utility>

namespace vistrel {

namespace {

host::Failure noAccount() {
    return {ENOTSUP, "No mail account is configured."};
}

}

SmtpMailService::SmtpMailService(host::EventLoop& loop, host::Files& files,
                                 const SettingLookup& setting)
    : loop_(loop)
    , files_(files)
    , account_(mailAccountFrom(setting))
    , cancellable_(NativeReference<GCancellable>::adopt(g_cancellable_new()))
    , curl_(std::make_shared<CurlLoop>()) {}

SmtpMailService::~SmtpMailService() {
    g_cancellable_cancel(cancellable_.get());
}

void SmtpMailService::failLater(host::Failure failure, Done done) {
    loop_.schedule(
        0, [failure = std::move(failure), done = std::move(done)] { done(failure); });
}

void SmtpMailService::sendMail(const host::OutgoingMail& mail,
                               std::function<void(double fraction)> progress, Done done) {
    if (!account_) {
        failLater(noAccount(), std::move(done));
        return;
    }
    auto built = mailMessage(mail, account_->from);
    if (!built) {
        failLater(built.failure(), std::move(done));
        return;
    }
    if (account_->user.empty()) {
        deliver({}, std::move(built.value()), std::move(progress), std::move(done));
        return;
    }
    askForMailPassword(
        *account_, cancellable_.get(),
        [this, message = std::move(built.value()), progress = std::move(progress),
         done = std::move(done)](std::optional<std::string> password) mutable {
            if (password)
                deliver(std::move(*password), std::move(message), std::move(progress),
                        std::move(done));
            else
                failLater({EACCES, "No password for the mail account was found."}, std::move(done));
        });
}

void SmtpMailService::deliver(std::string password, MailMessage message,
                              std::function<void(double fraction)> progress, Done done) {
    auto delivery =
        std::make_shared<SmtpDelivery>(curl_, *account_, std::move(password), std::move(message));
    delivery->begin(
        {std::move(progress),
         [this, each = delivery.get(), done = std::move(done)](const host::Status& outcome) {
             std::erase_if(deliveries_, [each](const auto& held) { return held.get() == each; });
             done(outcome);
         }});
    deliveries_.push_back(std::move(delivery));
}

host::Status SmtpMailService::saveDraft(const host::OutgoingMail& mail) {
    const std::string bytes = draftBytes(mail, account_ ? account_->from : std::string());
    if (auto made = files_.createDirectory(kDraftsFolder, true); !made)
        return made;
    char* name = g_uuid_string_random();
    const std::string path = std::string(kDraftsFolder) + "/" + name + ".eml";
    g_free(name);
    return files_.writeAtomically(path, std::as_bytes(std::span(bytes)));
}

}
