#include "platform/linux/mail/SmtpDialogue.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <utility>

namespace vistrel {

namespace {

struct Freed {
    void operator()(char* text) const { g_free(text); }
};

std::string base64(const std::string& bytes) {
    const std::unique_ptr<char, Freed> text(
        g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()));
    return text.get();
}

std::string upper(std::string text) {
    std::ranges::transform(text, text.begin(), g_ascii_toupper);
    return text;
}

/// What the server says, fit to be shown.
std::string shown(const SmtpReply& reply) {
    std::string text = std::to_string(reply.code);
    for (const std::string& line : reply.lines)
        text += " " + line;
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    const std::unique_ptr<char, Freed> valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return valid.get();
}

}

SmtpDialogue::SmtpDialogue(MailAccount account, std::string password, Parties parties)
    : account_(std::move(account))
    , password_(std::move(password))
    , parties_(std::move(parties))
    , secure_(account_.security == MailSecurity::TLS) {}

SmtpDialogue::Step SmtpDialogue::write(Waiting next, std::string line) {
    waiting_ = next;
    return {Action::Write, std::move(line)};
}

SmtpDialogue::Step SmtpDialogue::fail(int code, std::string message) {
    return {Action::Fail, {}, {code, std::move(message)}};
}

SmtpDialogue::Step SmtpDialogue::refused(const SmtpReply& reply) const {
    switch (waiting_) {
    case Waiting::Plain:
    case Waiting::LoginUser:
    case Waiting::LoginPassword:
    case Waiting::Password:
        // The server's words may repeat what was sent.
        return fail(EACCES, "The mail server refused the user name or the password (" +
                                std::to_string(reply.code) + ").");
    case Waiting::Recipient:
        return fail(reply.code < 500 ? EAGAIN : EREMOTEIO,
                    "The mail server refused " + parties_.recipients[nextRecipient_ - 1] + ": " +
                        shown(reply));
    default:
        return fail(reply.code < 500 ? EAGAIN : EREMOTEIO,
                    "The mail server refused the mail: " + shown(reply));
    }
}

SmtpDialogue::Step SmtpDialogue::replied(const SmtpReply& reply) {
    const int kind = reply.code / 100;
    const bool asksForMore = waiting_ == Waiting::LoginUser || waiting_ == Waiting::LoginPassword ||
                             waiting_ == Waiting::Data;
    if (kind != (asksForMore ? 3 : 2))
        return refused(reply);
    switch (waiting_) {
    case Waiting::Greeting:
        return hello();
    case Waiting::Hello:
        return afterHello(reply);
    case Waiting::StartTLS:
        return {Action::StartTLS};
    case Waiting::LoginUser:
        return write(Waiting::LoginPassword, base64(account_.user));
    case Waiting::LoginPassword:
        return write(Waiting::Password, base64(password_));
    case Waiting::Plain:
    case Waiting::Password:
        return write(Waiting::Sender, "MAIL FROM:<" + parties_.sender + ">");
    case Waiting::Sender:
    case Waiting::Recipient:
        return nextRecipient();
    case Waiting::Data:
        waiting_ = Waiting::Message;
        return {Action::WriteMessage};
    case Waiting::Message:
        return {Action::Finish};
    }
    return refused(reply);
}

SmtpDialogue::Step SmtpDialogue::secured() {
    secure_ = true;
    // What was offered before is worth nothing now: anybody could have said it.
    offersStartTLS_ = offersPlain_ = offersLogin_ = false;
    return hello();
}

SmtpDialogue::Step SmtpDialogue::hello() {
    return write(Waiting::Hello, "EHLO " + parties_.clientName);
}

SmtpDialogue::Step SmtpDialogue::afterHello(const SmtpReply& reply) {
    for (const std::string& line : reply.lines) {
        std::istringstream words(upper(line));
        std::string word;
        words >> word;
        offersStartTLS_ = offersStartTLS_ || word == "STARTTLS";
        if (word != "AUTH")
            continue;
        while (words >> word) {
            offersPlain_ = offersPlain_ || word == "PLAIN";
            offersLogin_ = offersLogin_ || word == "LOGIN";
        }
    }
    if (account_.security == MailSecurity::StartTLS && !secure_) {
        if (!offersStartTLS_)
            return fail(EPROTO, "The mail server does not offer encryption. Nothing was sent.");
        return write(Waiting::StartTLS, "STARTTLS");
    }
    return authenticate();
}

SmtpDialogue::Step SmtpDialogue::authenticate() {
    if (account_.user.empty())
        return write(Waiting::Sender, "MAIL FROM:<" + parties_.sender + ">");
    if (!secure_ && !parties_.isLocalServer)
        return fail(EPERM, "The password is not sent over a connection that is not encrypted.");
    if (offersPlain_) {
        const std::string zero(1, '\0');
        return write(Waiting::Plain,
                     "AUTH PLAIN " + base64(zero + account_.user + zero + password_));
    }
    if (offersLogin_)
        return write(Waiting::LoginUser, "AUTH LOGIN");
    return fail(EPROTO, "The mail server offers no way to sign in that is known here.");
}

SmtpDialogue::Step SmtpDialogue::nextRecipient() {
    if (nextRecipient_ == parties_.recipients.size())
        return write(Waiting::Data, "DATA");
    return write(Waiting::Recipient, "RCPT TO:<" + parties_.recipients[nextRecipient_++] + ">");
}

std::string smtpData(const std::string& messageBytes) {
    std::string data;
    data.reserve(messageBytes.size() + 64);
    bool atLineStart = true;
    for (const char c : messageBytes) {
        if (atLineStart && c == '.')
            data += '.';
        data += c;
        atLineStart = c == '\n';
    }
    if (!data.ends_with("\r\n"))
        data += "\r\n";
    return data + ".\r\n";
}

}
