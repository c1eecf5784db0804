#include "platform/linux/mail/SmtpDelivery.h"

#include "platform/linux/curl/CurlLoop.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/mail/SmtpTestServer.h"

namespace vistrel {
namespace {

using ::testing::Not;
using Replies = std::map<std::string, std::string>;

constexpr const char* kPassword = "s3cret-pass";

class SmtpDeliveryTest : public ::testing::Test {
protected:
    SmtpDeliveryTest() {
        account_.host = "127.0.0.1";
        account_.security = MailSecurity::None;
        account_.user = "me";
    }

    /// Sends to a server that behaves so: "sent", or why it failed.
    std::string send(SmtpTestServer::Behaviour behaviour) {
        SmtpTestServer server(std::move(behaviour));
        account_.port = server.port();
        std::string outcome = deliver();
        commands_ = server.commands();
        received_ = server.message();
        return outcome;
    }
    std::string deliver() {
        outcomes_.clear();
        progress_.clear();
        const auto delivery = begin();
        EXPECT_THAT(outcomes_, IsEmpty()) << "reported before begin returned";
        EXPECT_TRUE(turnUntil([this] { return !outcomes_.empty(); }));
        turnFor(0.03);
        EXPECT_EQ(outcomes_.size(), 1U);
        return code() == 0 ? "sent" : outcomes_.front().failure().message;
    }
    std::shared_ptr<SmtpDelivery> begin() {
        auto delivery = std::make_shared<SmtpDelivery>(curl_, account_, kPassword, message_);
        delivery->begin({[this](double fraction) { progress_.push_back(fraction); },
                         [this](host::Status status) {
                             outcomes_.push_back(std::move(status));
                         }});
        return delivery;
    }
    /// Of the failure; 0 when there was none.
    int code() const { return outcomes_.at(0).ok() ? 0 : outcomes_.at(0).failure().code; }

    std::shared_ptr<CurlLoop> curl_ = std::make_shared<CurlLoop>();
    MailAccount account_;
    MailMessage message_{
        "me@example.com", {"a@example.com", "b@example.com"}, "Subject: x\r\n\r\n.dot\r\nend\r\n"};
    std::vector<host::Status> outcomes_;
    std::vector<double> progress_;
    std::vector<std::string> commands_;
    std::string received_;
};

TEST_F(SmtpDeliveryTest, AMailGoesThroughInOneConversation) {
    EXPECT_EQ(send({}), "sent");
    // base64 of NUL "me" NUL "s3cret-pass"
    EXPECT_THAT(commands_, ElementsAre("EHLO [127.0.0.1]", "AUTH PLAIN AG1lAHMzY3JldC1wYXNz",
                                       "MAIL FROM:<me@example.com>", "RCPT TO:<a@example.com>",
                                       "RCPT TO:<b@example.com>", "DATA", "QUIT"));
    EXPECT_EQ(received_, "Subject: x\r\n\r\n..dot\r\nend\r\n");
    ASSERT_FALSE(progress_.empty());
    EXPECT_EQ(progress_.back(), 1);
}

TEST_F(SmtpDeliveryTest, TheServerAndTheAccountDecideHowToSignIn) {
    EXPECT_EQ(send({.extensions = {"SIZE 1000", "AUTH LOGIN"},
                    .replies = {{"AUTH", "334 VXNlcm5hbWU6"}}}),
              "sent");
    EXPECT_THAT(commands_, testing::IsSupersetOf({"AUTH LOGIN bWU=", "czNjcmV0LXBhc3M="}));
    account_.user.clear();
    EXPECT_EQ(send({.extensions = {}}), "sent");
    EXPECT_THAT(commands_, Not(Contains(StartsWith("AUTH"))));
}

TEST_F(SmtpDeliveryTest, ARefusalAtAnyPointFailsWithTheServersReply) {
    const std::tuple<Replies, int, const char*> cases[] = {
        {{{"greeting", "421 too busy"}}, EAGAIN, "421 too busy"},
        {{{"AUTH", "535 5.7.8 bad AG1lAHMzY3JldC1wYXNz"}},
         EACCES,
         "refused the user name or the password (535)"},
        {{{"MAIL", "451 try\x1blater"}}, EAGAIN, "451 try later"},
        {{{"RCPT", "550-no such\r\n550 user"}}, EREMOTEIO, "refused the mail: 550 no such user"},
        {{{"DATA", "452 disk full"}}, EAGAIN, "452 disk full"},
        {{{"message", "554 spam"}}, EREMOTEIO, "554 spam"},
        {{{"greeting", "HTTP/1.1 400 Bad Request"}}, EPROTO, "is not a mail server"},
        {{{"greeting", ""}}, ECONNRESET, "closed the connection"},
        {{{"MAIL", ""}}, ECONNRESET, "closed the connection"},
    };
    for (const auto& [replies, number, says] : cases) {
        const std::string failure = send({.replies = replies});
        EXPECT_EQ(code(), number) << says;
        EXPECT_THAT(failure, HasSubstr(says));
        EXPECT_THAT(failure, Not(HasSubstr(kPassword)));
        EXPECT_THAT(failure, Not(HasSubstr("AG1lAHMzY3JldC1wYXNz")));
    }
}

TEST_F(SmtpDeliveryTest, AConnectionLostInTheMiddleOfTheMessageIsAFailure) {
    message_.bytes += std::string(70, 'x') + "\r\n";
    while (message_.bytes.size() < 4'000'000)
        message_.bytes += message_.bytes;
    send({.messageBytes = 100'000});
    EXPECT_EQ(code(), ECONNRESET);
    EXPECT_EQ(received_, "");
    ASSERT_FALSE(progress_.empty());
    EXPECT_LT(progress_.front(), 1);
}

TEST_F(SmtpDeliveryTest, NoServerAndNoEncryptionToARemoteHostAreFailures) {
    account_.port = SmtpTestServer({}).port();
    EXPECT_THAT(deliver(), HasSubstr("cannot be reached"));
    account_.host = "192.0.2.1";
    deliver();
    EXPECT_EQ(code(), EPERM) << "a password in the clear";
}

TEST_F(SmtpDeliveryTest, ADeliveryThatIsDroppedIsSilent) {
    SmtpTestServer server({});
    account_.port = server.port();
    auto delivery = begin();
    turnUntil([&server] { return !server.commands().empty(); });
    delivery.reset();
    turnFor(0.1);
    EXPECT_THAT(outcomes_, IsEmpty());
}

TEST_F(SmtpDeliveryTest, AServerThatDoesNotSayGoodbyeDelaysNobody) {
    for (const Replies& replies : {Replies{}, Replies{{"MAIL", "550 no"}}}) {
        const auto start = std::chrono::steady_clock::now();
        const std::string outcome = send({.replies = replies, .staysOpen = true});
        EXPECT_EQ(outcome == "sent", replies.empty()) << outcome;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

class EncryptedDelivery : public SmtpDeliveryTest {
protected:
    void SetUp() override {
        account_.host = "localhost";
        account_.security = MailSecurity::StartTLS;
        account_.certificateAuthorityFile = certificate_.file();
    }
    SmtpTestServer::Behaviour secureServer() const {
        return {.extensions = {"STARTTLS", "AUTH PLAIN"}, .certificate = &certificate_};
    }
    TestCertificate certificate_;
};

TEST_F(EncryptedDelivery, OnlyTheGreetingPrecedesTheEncryption) {
    EXPECT_EQ(send(secureServer()), "sent");
    EXPECT_THAT(commands_, ElementsAre(StartsWith("EHLO ["), "STARTTLS", StartsWith("*EHLO ["),
                                       StartsWith("*AUTH PLAIN "), "*MAIL FROM:<me@example.com>",
                                       "*RCPT TO:<a@example.com>", "*RCPT TO:<b@example.com>",
                                       "*DATA", "*QUIT"));
    EXPECT_THAT(received_, HasSubstr("..dot"));

    account_.security = MailSecurity::TLS;
    auto behaviour = secureServer();
    behaviour.encrypted = true;
    EXPECT_EQ(send(behaviour), "sent");
    EXPECT_THAT(commands_.front(), StartsWith("*EHLO"));
}

TEST_F(EncryptedDelivery, AnUntrustedServerGetsNothing) {
    const struct {
        const char* name;
        std::vector<std::string> extensions;
        const char* host;
        bool trusted;
        const char* injected;
    } cases[] = {
        {"offers no encryption", {"AUTH PLAIN"}, "localhost", true, ""},
        {"unknown authority", {"STARTTLS"}, "localhost", false, ""},
        {"another's certificate", {"STARTTLS"}, "127.0.0.1", true, ""},
        {"speaks too soon", {"STARTTLS"}, "localhost", true, "250 AUTH PLAIN\r\n"},
    };
    for (const auto& each : cases) {
        auto behaviour = secureServer();
        behaviour.extensions = each.extensions;
        behaviour.injected = each.injected;
        account_.host = each.host;
        account_.certificateAuthorityFile = each.trusted ? certificate_.file() : "";
        EXPECT_NE(send(behaviour), "sent") << each.name;
        for (const std::string& command : commands_)
            EXPECT_TRUE(command.starts_with("EHLO") || command == "STARTTLS")
                << each.name << ": " << command;
    }
}

}
}
