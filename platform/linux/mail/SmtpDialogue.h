#pragma once
#include "platform/host/Result.h"
#include "platform/linux/mail/MailAccount.h"
#include "platform/linux/mail/SmtpReply.h"

#include <string>
#include <vector>

namespace vistrel {

/// The client's part of one mail submission (RFC 5321, 3207, 4954): what to do after each of the
/// server's replies. Neither reads nor writes.
class SmtpDialogue {
public:
    struct Parties {
        std::string clientName; ///< as EHLO says it
        std::string sender;
        std::vector<std::string> recipients;
        bool isLocalServer = false; ///< on this machine: a password may travel unencrypted
    };
    enum class Action { Write, StartTLS, WriteMessage, Finish, Fail };
    struct Step {
        Action action;
        std::string line = {}; ///< to write, without line end
        host::Failure failure = {};
    };

    SmtpDialogue(MailAccount account, std::string password, Parties parties);

    Step replied(const SmtpReply& reply);
    /// The connection is encrypted now, as StartTLS asked.
    Step secured();

private:
    enum class Waiting {
        Greeting,
        Hello,
        StartTLS,
        Plain,
        LoginUser,
        LoginPassword,
        Password,
        Sender,
        Recipient,
        Data,
        Message
    };

    Step write(Waiting next, std::string line);
    Step hello();
    Step afterHello(const SmtpReply& reply);
    Step authenticate();
    Step nextRecipient();
    static Step fail(int code, std::string message);
    Step refused(const SmtpReply& reply) const;

    MailAccount account_;
    std::string password_;
    Parties parties_;
    Waiting waiting_ = Waiting::Greeting;
    bool secure_;
    bool offersStartTLS_ = false;
    bool offersPlain_ = false;
    bool offersLogin_ = false;
    std::size_t nextRecipient_ = 0;
};

/// The message as DATA carries it: dots at line starts doubled, the final dot at the end.
std::string smtpData(const std::string& messageBytes);

}
