#pragma once
#include "platform/host/Result.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/mail/MailMessage.h"
#include "platform/linux/mail/SmtpDialogue.h"

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vistrel {

/// Brings one mail to the account's server, on the default main context. Keeps itself alive until
/// it has ended; the certificate must be that of the account's host.
class SmtpDelivery : public std::enable_shared_from_this<SmtpDelivery> {
public:
    struct Callbacks {
        std::function<void(double fraction)> progress;
        /// Once, and never before start has returned. Not at all when cancelled.
        std::function<void(host::Status)> done;
    };

    SmtpDelivery(MailAccount account, std::string password, MailMessage message,
                 Callbacks callbacks);
    ~SmtpDelivery();
    SmtpDelivery(const SmtpDelivery&) = delete;
    SmtpDelivery& operator=(const SmtpDelivery&) = delete;

    void start(GCancellable* cancellable);

private:
    using Self = std::shared_ptr<SmtpDelivery>;
    static void connected(GObject* client, GAsyncResult* result, gpointer data);
    static void encrypted(GObject* connection, GAsyncResult* result, gpointer data);
    static void received(GObject* stream, GAsyncResult* result, gpointer data);
    static void written(GObject* stream, GAsyncResult* result, gpointer data);
    /// A reference for the time of one native call; taken back by its callback.
    gpointer keptAlive() { return new Self(shared_from_this()); }
    static Self takenBack(gpointer data);

    void beginDialogue(GSocketConnection& connection);
    void encrypt();
    void read();
    void write(std::string bytes, bool isMessage);
    void writeSome();
    void takeReplies();
    void perform(const SmtpDialogue::Step& step);
    /// Cancellation ends in silence.
    void failWith(GError* error, const char* what);
    void finish(host::Status outcome);

    MailAccount account_;
    std::string password_;
    MailMessage message_;
    Callbacks callbacks_;
    NativeReference<GCancellable> cancellable_;
    NativeReference<GIOStream> stream_;
    std::optional<SmtpDialogue> dialogue_;
    SmtpReplyReader replies_;
    std::string outgoing_;
    std::size_t writtenBytes_ = 0;
    bool writingMessage_ = false;
    bool finished_ = false;
    char buffer_[4096];
};

}
