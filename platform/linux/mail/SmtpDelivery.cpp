#include "platform/linux/mail/SmtpDelivery.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace vistrel {

namespace {

/// Of silence.
constexpr guint kTimeoutSeconds = 60;
constexpr std::size_t kWrittenAtOnce = 16384;

std::string literalOf(GInetAddress* address) {
    char* text = g_inet_address_to_string(address);
    const bool isNew = g_inet_address_get_family(address) == G_SOCKET_FAMILY_IPV6;
    std::string literal = std::string(isNew ? "[IPv6:" : "[") + text + "]";
    g_free(text);
    return literal;
}

GInetAddress* inetAddress(GSocketAddress* address) {
    return G_IS_INET_SOCKET_ADDRESS(address)
               ? g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(address))
               : nullptr;
}

}

SmtpDelivery::SmtpDelivery(MailAccount account, std::string password, MailMessage message,
                           Callbacks callbacks)
    : account_(std::move(account))
    , password_(std::move(password))
    , message_(std::move(message))
    , callbacks_(std::move(callbacks)) {}

SmtpDelivery::~SmtpDelivery() = default;

SmtpDelivery::Self SmtpDelivery::takenBack(gpointer data) {
    const std::unique_ptr<Self> kept(static_cast<Self*>(data));
    return std::move(*kept);
}

void SmtpDelivery::start(GCancellable* cancellable) {
    cancellable_ = NativeReference<GCancellable>::ref(cancellable);
    const auto client = NativeReference<GSocketClient>::adopt(g_socket_client_new());
    g_socket_client_set_timeout(client.get(), kTimeoutSeconds);
    const auto address = NativeReference<GSocketConnectable>::adopt(
        g_network_address_new(account_.host.c_str(), account_.port));
    g_socket_client_connect_async(client.get(), address.get(), cancellable_.get(), connected,
                                  keptAlive());
}

void SmtpDelivery::connected(GObject* client, GAsyncResult* result, gpointer data) {
    const Self self = takenBack(data);
    GError* error = nullptr;
    GSocketConnection* connection =
        g_socket_client_connect_finish(G_SOCKET_CLIENT(client), result, &error);
    if (!connection) {
        self->failWith(error, "The mail server cannot be reached");
        return;
    }
    self->stream_ = NativeReference<GIOStream>::adopt(G_IO_STREAM(connection));
    self->beginDialogue(*connection);
}

void SmtpDelivery::beginDialogue(GSocketConnection& connection) {
    SmtpDialogue::Parties parties{"localhost", message_.sender, message_.recipients, false};
    const auto local = NativeReference<GSocketAddress>::adopt(
        g_socket_connection_get_local_address(&connection, nullptr));
    const auto remote = NativeReference<GSocketAddress>::adopt(
        g_socket_connection_get_remote_address(&connection, nullptr));
    if (GInetAddress* address = inetAddress(local.get()))
        parties.clientName = literalOf(address);
    if (GInetAddress* address = inetAddress(remote.get()))
        parties.isLocalServer = g_inet_address_get_is_loopback(address) != FALSE;
    dialogue_.emplace(account_, std::move(password_), std::move(parties));
    if (account_.security == MailSecurity::TLS)
        encrypt();
    else
        read();
}

void SmtpDelivery::encrypt() {
    GError* error = nullptr;
    const auto identity = NativeReference<GSocketConnectable>::adopt(
        g_network_address_new(account_.host.c_str(), account_.port));
    GIOStream* secure = g_tls_client_connection_new(stream_.get(), identity.get(), &error);
    if (secure && !account_.certificateAuthorityFile.empty()) {
        const auto authorities = NativeReference<GTlsDatabase>::adopt(
            g_tls_file_database_new(account_.certificateAuthorityFile.c_str(), &error));
        if (authorities)
            g_tls_connection_set_database(G_TLS_CONNECTION(secure), authorities.get());
    }
    if (secure)
        stream_ = NativeReference<GIOStream>::adopt(secure);
    if (error) {
        failWith(error, "The connection to the mail server cannot be encrypted");
        return;
    }
    g_tls_connection_handshake_async(G_TLS_CONNECTION(stream_.get()), G_PRIORITY_DEFAULT,
                                     cancellable_.get(), encrypted, keptAlive());
}

void SmtpDelivery::encrypted(GObject* connection, GAsyncResult* result, gpointer data) {
    const Self self = takenBack(data);
    GError* error = nullptr;
    if (!g_tls_connection_handshake_finish(G_TLS_CONNECTION(connection), result, &error))
        self->failWith(error, "The connection to the mail server cannot be encrypted");
    else if (self->account_.security == MailSecurity::TLS)
        self->read(); // the greeting comes now
    else
        self->perform(self->dialogue_->secured());
}

void SmtpDelivery::read() {
    g_input_stream_read_async(g_io_stream_get_input_stream(stream_.get()), buffer_, sizeof buffer_,
                              G_PRIORITY_DEFAULT, cancellable_.get(), received, keptAlive());
}

void SmtpDelivery::received(GObject* stream, GAsyncResult* result, gpointer data) {
    const Self self = takenBack(data);
    GError* error = nullptr;
    const gssize count = g_input_stream_read_finish(G_INPUT_STREAM(stream), result, &error);
    if (count < 0) {
        self->failWith(error, "The connection to the mail server was lost");
    } else if (count == 0) {
        self->finish(host::Failure{ECONNRESET, "The mail server closed the connection."});
    } else {
        self->replies_.add({self->buffer_, static_cast<std::size_t>(count)});
        self->takeReplies();
    }
}

void SmtpDelivery::takeReplies() {
    if (const auto reply = replies_.next())
        perform(dialogue_->replied(*reply));
    else if (replies_.isBroken())
        finish(host::Failure{EPROTO, "The other side is no mail server."});
    else
        read();
}

void SmtpDelivery::perform(const SmtpDialogue::Step& step) {
    switch (step.action) {
    case SmtpDialogue::Action::Write:
        write(step.line + "\r\n", false);
        break;
    case SmtpDialogue::Action::WriteMessage:
        write(smtpData(message_.bytes), true);
        break;
    case SmtpDialogue::Action::StartTLS:
        // Bytes that came before the encryption would count as said under it.
        if (replies_.isEmpty())
            encrypt();
        else
            finish(host::Failure{EPROTO, "The mail server spoke before the encryption began."});
        break;
    case SmtpDialogue::Action::Finish:
        finish(host::Done{});
        break;
    case SmtpDialogue::Action::Fail:
        finish(step.failure);
        break;
    }
}

void SmtpDelivery::write(std::string bytes, bool isMessage) {
    outgoing_ = std::move(bytes);
    writtenBytes_ = 0;
    writingMessage_ = isMessage;
    writeSome();
}

void SmtpDelivery::writeSome() {
    const std::size_t size = std::min(kWrittenAtOnce, outgoing_.size() - writtenBytes_);
    g_output_stream_write_async(g_io_stream_get_output_stream(stream_.get()),
                                outgoing_.data() + writtenBytes_, size, G_PRIORITY_DEFAULT,
                                cancellable_.get(), written, keptAlive());
}

void SmtpDelivery::written(GObject* stream, GAsyncResult* result, gpointer data) {
    const Self self = takenBack(data);
    GError* error = nullptr;
    const gssize count = g_output_stream_write_finish(G_OUTPUT_STREAM(stream), result, &error);
    if (count < 0) {
        self->failWith(error, "The connection to the mail server was lost");
        return;
    }
    self->writtenBytes_ += static_cast<std::size_t>(count);
    if (self->writingMessage_ && self->callbacks_.progress)
        self->callbacks_.progress(static_cast<double>(self->writtenBytes_) /
                                  static_cast<double>(self->outgoing_.size()));
    if (self->writtenBytes_ < self->outgoing_.size())
        self->writeSome();
    else
        self->takeReplies();
}

void SmtpDelivery::failWith(GError* error, const char* what) {
    const bool cancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    const host::Failure failure{ECONNRESET, std::string(what) + ": " + error->message};
    g_error_free(error);
    if (cancelled)
        finished_ = true;
    else
        finish(failure);
}

void SmtpDelivery::finish(host::Status outcome) {
    if (std::exchange(finished_, true))
        return;
    if (stream_) {
        // The mail's fate is settled; a farewell that does not arrive changes nothing.
        if (outcome.ok())
            g_output_stream_write(g_io_stream_get_output_stream(stream_.get()), "QUIT\r\n", 6,
                                  nullptr, nullptr);
        g_io_stream_close_async(stream_.get(), G_PRIORITY_DEFAULT, nullptr, nullptr, nullptr);
    }
    if (const auto done = std::exchange(callbacks_.done, {}))
        done(std::move(outcome));
}

}
