#include "platform/linux/mail/SmtpDelivery.h"

#include "platform/linux/curl/CurlLoop.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace vistrel {

namespace {

/// Of silence.
constexpr long kTimeoutSeconds = 60;

bool isLoopback(const sockaddr& address) {
    if (address.sa_family == AF_INET) {
        const auto& four = reinterpret_cast<const sockaddr_in&>(address);
        return (ntohl(four.sin_addr.s_addr) >> 24) == 127;
    }
    const auto& six = reinterpret_cast<const sockaddr_in6&>(address);
    return address.sa_family == AF_INET6 && IN6_IS_ADDR_LOOPBACK(&six.sin6_addr);
}

/// The path is what EHLO calls this machine; its name and address are nobody's business.
std::string serverURL(const MailAccount& account) {
    const bool isIPv6 = account.host.find(':') != std::string::npos;
    const std::string host = isIPv6 ? "[" + account.host + "]" : account.host;
    return (account.security == MailSecurity::TLS ? "smtps://" : "smtp://") + host + ":" +
           std::to_string(account.port) + "/%5B127.0.0.1%5D";
}

}

SmtpDelivery::SmtpDelivery(std::shared_ptr<CurlLoop> loop, MailAccount account,
                           std::string password, MailMessage message)
    : CurlTransfer(std::move(loop))
    , account_(std::move(account))
    , password_(std::move(password))
    , message_(std::move(message)) {}

SmtpDelivery::~SmtpDelivery() {
    stop();
}

void SmtpDelivery::begin(Callbacks callbacks) {
    callbacks_ = std::move(callbacks);
    curl_easy_setopt(handle(), CURLOPT_URL, serverURL(account_).c_str());
    curl_easy_setopt(handle(), CURLOPT_PROXY, "");
    curl_easy_setopt(handle(), CURLOPT_CONNECTTIMEOUT, kTimeoutSeconds);
    curl_easy_setopt(handle(), CURLOPT_SERVER_RESPONSE_TIMEOUT, kTimeoutSeconds);
    curl_easy_setopt(handle(), CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(handle(), CURLOPT_LOW_SPEED_TIME, kTimeoutSeconds);
    curl_easy_setopt(handle(), CURLOPT_FORBID_REUSE, 1L);
    curl_easy_setopt(handle(), CURLOPT_HEADERFUNCTION, &SmtpDelivery::takeReplyLine);
    curl_easy_setopt(handle(), CURLOPT_HEADERDATA, this);
    setUpSecurity();
    setUpMessage();
    start();
}

void SmtpDelivery::setUpSecurity() {
    if (account_.security != MailSecurity::None)
        curl_easy_setopt(handle(), CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    if (!account_.certificateAuthorityFile.empty()) {
        curl_easy_setopt(handle(), CURLOPT_CAINFO, account_.certificateAuthorityFile.c_str());
        curl_easy_setopt(handle(), CURLOPT_CAPATH, nullptr);
    }
    curl_easy_setopt(handle(), CURLOPT_OPENSOCKETFUNCTION, &SmtpDelivery::openSocket);
    curl_easy_setopt(handle(), CURLOPT_OPENSOCKETDATA, this);
    if (account_.user.empty())
        return;
    curl_easy_setopt(handle(), CURLOPT_USERNAME, account_.user.c_str());
    curl_easy_setopt(handle(), CURLOPT_PASSWORD, password_.c_str());
    curl_easy_setopt(handle(), CURLOPT_SASL_IR, 1L);
}

void SmtpDelivery::setUpMessage() {
    for (const std::string& recipient : message_.recipients) {
        curl_slist* longer = curl_slist_append(recipients_.get(), ("<" + recipient + ">").c_str());
        (void)recipients_.release();
        recipients_.reset(longer);
    }
    curl_easy_setopt(handle(), CURLOPT_MAIL_FROM, ("<" + message_.sender + ">").c_str());
    curl_easy_setopt(handle(), CURLOPT_MAIL_RCPT, recipients_.get());
    curl_easy_setopt(handle(), CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(handle(), CURLOPT_READFUNCTION, &SmtpDelivery::giveMessage);
    curl_easy_setopt(handle(), CURLOPT_READDATA, this);
}

curl_socket_t SmtpDelivery::openSocket(void* data, curlsocktype, curl_sockaddr* address) {
    auto* self = static_cast<SmtpDelivery*>(data);
    if (self->account_.security == MailSecurity::None && !self->account_.user.empty() &&
        !isLoopback(address->addr)) {
        self->passwordWouldBeSeen_ = true;
        return CURL_SOCKET_BAD;
    }
    self->socket_ = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    return self->socket_;
}

std::size_t SmtpDelivery::giveMessage(char* bytes, std::size_t size, std::size_t count,
                                      void* data) {
    auto* self = static_cast<SmtpDelivery*>(data);
    const std::size_t given = self->message_.bytes.copy(bytes, size * count, self->sentBytes_);
    self->sentBytes_ += given;
    self->wake();
    return given;
}

std::size_t SmtpDelivery::takeReplyLine(char* bytes, std::size_t size, std::size_t count,
                                        void* data) {
    auto* self = static_cast<SmtpDelivery*>(data);
    if (self->dialogueIsOver_)
        return size * count;
    if (!self->reply_.take({bytes, size * count}))
        return CURL_WRITEFUNC_ERROR;
    self->dialogueIsOver_ =
        self->reply_.isComplete() &&
        (self->reply_.isRefusal() || self->sentBytes_ == self->message_.bytes.size());
    // The library says goodbye now, and would keep the loop waiting for an answer to that.
    if (self->dialogueIsOver_)
        ::shutdown(self->socket_, SHUT_RD);
    return size * count;
}

void SmtpDelivery::progressed() {
    if (callbacks_.progress)
        callbacks_.progress(static_cast<double>(sentBytes_) /
                            static_cast<double>(message_.bytes.size()));
}

void SmtpDelivery::ended(CURLcode result) {
    const auto done = std::exchange(callbacks_.done, {});
    done(result == CURLE_OK ? host::Status(host::Done{}) : host::Status(failureOf(result)));
}

host::Failure SmtpDelivery::failureOf(CURLcode result) const {
    if (passwordWouldBeSeen_)
        return {EPERM, "The password is not sent over a connection that is not encrypted."};
    switch (result) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_URL_MALFORMAT:
        return {ECONNREFUSED, "The mail server cannot be reached."};
    case CURLE_OPERATION_TIMEDOUT:
        return {ETIMEDOUT, "The mail server is not responding."};
    case CURLE_USE_SSL_FAILED:
        return {EPROTO, "The mail server does not offer encryption. Nothing was sent."};
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CONNECT_ERROR:
        return {EPROTO, "The connection to the mail server cannot be encrypted: " + errorText()};
    case CURLE_LOGIN_DENIED:
        if (!reply_.isRefusal())
            return {EPROTO, "The mail server offers no supported sign-in method."};
        // The server's words may repeat what was sent.
        return {EACCES, "The mail server refused the user name or the password (" +
                            std::to_string(reply_.code()) + ")."};
    case CURLE_WRITE_ERROR:
        return {EPROTO, "The remote host is not a mail server."};
    default:
        break;
    }
    if (reply_.isRefusal())
        return {reply_.code() < 500 ? EAGAIN : EREMOTEIO,
                "The mail server refused the mail: " + reply_.text()};
    if (result == CURLE_WEIRD_SERVER_REPLY)
        return {EPROTO, "The remote host is not a mail server."};
    return {ECONNRESET, "The mail server closed the connection."};
}

}
