#pragma once
#include "platform/host/Result.h"
#include "platform/linux/curl/CurlTransfer.h"
#include "platform/linux/mail/MailAccount.h"
#include "platform/linux/mail/MailMessage.h"
#include "platform/linux/mail/SmtpReply.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// Brings one mail to the account's server, whose certificate must be that of the account's host.
/// The password is never sent unencrypted, except to a server on this machine.
class SmtpDelivery : public CurlTransfer {
public:
    struct Callbacks {
        std::function<void(double fraction)> progress;
        /// Once, and never before begin has returned. May destroy the delivery.
        std::function<void(host::Status)> done;
    };

    SmtpDelivery(std::shared_ptr<CurlLoop> loop, MailAccount account, std::string password,
                 MailMessage message);
    ~SmtpDelivery() override;

    void begin(Callbacks callbacks);

private:
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    static curl_socket_t openSocket(void* self, curlsocktype purpose, curl_sockaddr* address);
    static std::size_t giveMessage(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t takeReplyLine(char* bytes, std::size_t size, std::size_t count, void* self);
    void progressed() override;
    void ended(CURLcode result) override;

    void setUpSecurity();
    void setUpMessage();
    host::Failure failureOf(CURLcode result) const;

    MailAccount account_;
    std::string password_;
    MailMessage message_;
    Callbacks callbacks_;
    std::unique_ptr<curl_slist, ListDeleter> recipients_;
    std::size_t sentBytes_ = 0;
    SmtpReply reply_;             ///< the last one that matters
    bool dialogueIsOver_ = false; ///< whatever comes now changes nothing
    curl_socket_t socket_ = CURL_SOCKET_BAD;
    bool passwordWouldBeSeen_ = false;
};

}
