#include "platform/linux/mail/SmtpDelivery.h"

#include "tests/linux/MainLoop.h"
#include "tests/linux/TestCertificate.h"
#include "tests/linux/mail/SmtpTestServer.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using Replies = std::map<std::string, std::string>;

constexpr const char* kPassword = "s3cret-pass";

class SmtpDeliveryTest : public ::testing::Test {
protected:
    SmtpDeliveryTest() {
        account_.host = "127.0.0.1";
        account_.security = MailSecurity::None;
        account_.user = "me";
        message_ = {"me@example.com",
                    {"a@example.com", "b@example.com"},
                    "Subject: x\r\n\r\n.dot\r\nend\r\n"};
    }

    /// Sends to a server that behaves so, and waits for the outcome.
    void send(SmtpTestServer::Behaviour behaviour) {
        SmtpTestServer server(std::move(behaviour));
        account_.port = server.port();
        outcomes_.clear();
        progress_.clear();
        const auto cancellable = NativeReference<GCancellable>::adopt(g_cancellable_new());
        std::make_shared<SmtpDelivery>(
            account_, kPassword, message_,
            SmtpDelivery::Callbacks{[this](double fraction) { progress_.push_back(fraction); },
                                    [this](host::Status status) {
                                        outcomes_.push_back(std::move(status));
                                    }})
            ->start(cancellable.get());
        EXPECT_THAT(outcomes_, IsEmpty()) << "told before start returned";
        EXPECT_TRUE(turnUntil([this] { return !outcomes_.empty(); }));
        turnFor(0.03);
        EXPECT_EQ(outcomes_.size(), 1U);
        commands_ = server.commands();
        received_ = server.message();
    }
    bool succeeded() { return !outcomes_.empty() && outcomes_.front().ok(); }
    std::string failure() {
        return outcomes_.empty() || succeeded() ? "" : outcomes_.front().failure().message;
    }

    MailAccount account_;
    MailMessage message_;
    std::vector<host::Status> outcomes_;
    std::vector<double> progress_;
    std::vector<std::string> commands_;
    std::string received_;
};

TEST_F(SmtpDeliveryTest, AMailGoesThroughInOneConversation) {
    send({});
    EXPECT_TRUE(succeeded()) << failure();
    // base64 of NUL "me" NUL "s3cret-pass"
    EXPECT_THAT(commands_, ElementsAre("EHLO [127.0.0.1]", "AUTH PLAIN AG1lAHMzY3JldC1wYXNz",
                                       "MAIL FROM:<me@example.com>", "RCPT TO:<a@example.com>",
                                       "RCPT TO:<b@example.com>", "DATA", "QUIT"));
    EXPECT_EQ(received_, "Subject: x\r\n\r\n..dot\r\nend\r\n");
    ASSERT_FALSE(progress_.empty());
    EXPECT_EQ(progress_.back(), 1);
}

TEST_F(SmtpDeliveryTest, AServerThatKnowsOnlyTheOlderSignInGetsThat) {
    send({.extensions = {"SIZE 1000", "auth login"}, .replies = {{"AUTH", "334 VXNlcm5hbWU6"}}});
    EXPECT_TRUE(succeeded()) << failure();
    EXPECT_THAT(commands_, testing::Contains("AUTH LOGIN"));
    EXPECT_THAT(commands_, testing::Contains("bWU="));
    EXPECT_THAT(commands_, testing::Contains("czNjcmV0LXBhc3M="));
}

TEST_F(SmtpDeliveryTest, WithoutAUserNobodySignsIn) {
    account_.user.clear();
    send({.extensions = {}});
    EXPECT_TRUE(succeeded()) << failure();
    EXPECT_THAT(commands_, Not(testing::Contains(StartsWith("AUTH"))));
}

TEST_F(SmtpDeliveryTest, ARefusalAtAnyPointEndsItWithTheServersWords) {
    struct Case {
        const char* name;
        Replies replies;
        int code;
        const char* says;
    };
    const Case cases[] = {
        {"busy", {{"greeting", "421 too busy"}}, EAGAIN, "421 too busy"},
        {"password",
         {{"AUTH", "535 5.7.8 bad AG1lAHMzY3JldC1wYXNz"}},
         EACCES,
         "refused the user name or the password (535)"},
        {"sender", {{"MAIL", "451 try later"}}, EAGAIN, "451 try later"},
        {"recipient",
         {{"RCPT", "550-no such\r\n550 user"}},
         EREMOTEIO,
         "refused a@example.com: 550 no such user"},
        {"data", {{"DATA", "452 disk full"}}, EAGAIN, "452 disk full"},
        {"message", {{"message", "554 spam"}}, EREMOTEIO, "554 spam"},
        {"no mail server", {{"greeting", "HTTP/1.1 400 Bad Request"}}, EPROTO, "no mail server"},
        {"changing codes", {{"MAIL", "250-a\r\n550 b"}}, EPROTO, "no mail server"},
        {"hangs up at once", {{"greeting", ""}}, ECONNRESET, "closed the connection"},
        {"hangs up later", {{"MAIL", ""}}, ECONNRESET, "closed the connection"},
    };
    for (const Case& each : cases) {
        send({.replies = each.replies});
        ASSERT_FALSE(succeeded()) << each.name;
        EXPECT_EQ(outcomes_.front().failure().code, each.code) << each.name;
        EXPECT_THAT(failure(), HasSubstr(each.says)) << each.name;
        EXPECT_THAT(failure(), Not(HasSubstr(kPassword))) << each.name;
        EXPECT_THAT(failure(), Not(HasSubstr("AG1lAHMzY3JldC1wYXNz"))) << each.name;
    }
}

TEST_F(SmtpDeliveryTest, AConnectionLostInTheMiddleOfTheMessageIsAFailure) {
    message_.bytes += std::string(70, 'x') + "\r\n";
    while (message_.bytes.size() < 4'000'000)
        message_.bytes += message_.bytes;
    send({.messageBytes = 100'000});
    EXPECT_FALSE(succeeded());
    EXPECT_EQ(outcomes_.front().failure().code, ECONNRESET);
    EXPECT_EQ(received_, "");
    ASSERT_FALSE(progress_.empty());
    EXPECT_LT(progress_.front(), 1);
}

TEST_F(SmtpDeliveryTest, AServerThatIsNotThereIsAFailure) {
    {
        SmtpTestServer gone({});
        account_.port = gone.port();
    }
    bool failed = false;
    std::make_shared<SmtpDelivery>(account_, kPassword, message_,
                                   SmtpDelivery::Callbacks{{},
                                                           [&failed](const host::Status& s) {
                                                               failed = !s.ok();
                                                           }})
        ->start(nullptr);
    EXPECT_TRUE(turnUntil([&failed] { return failed; }));
}

TEST_F(SmtpDeliveryTest, ACancelledDeliveryIsSilent) {
    SmtpTestServer server({});
    account_.port = server.port();
    bool told = false;
    const auto cancellable = NativeReference<GCancellable>::adopt(g_cancellable_new());
    std::make_shared<SmtpDelivery>(account_, kPassword, message_,
                                   SmtpDelivery::Callbacks{{},
                                                           [&told](const host::Status&) {
                                                               told = true;
                                                           }})
        ->start(cancellable.get());
    turnUntil([&server] { return !server.commands().empty(); });
    g_cancellable_cancel(cancellable.get());
    turnFor(0.1);
    EXPECT_FALSE(told);
}

class EncryptedDelivery : public SmtpDeliveryTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(certificate_.isMade());
        account_.host = "localhost";
        account_.security = MailSecurity::StartTLS;
        account_.certificateAuthorityFile = certificate_.certificateFile();
    }
    SmtpTestServer::Behaviour secureServer() const {
        return {.extensions = {"STARTTLS", "AUTH PLAIN"},
                .certificateFile = certificate_.certificateFile(),
                .keyFile = certificate_.keyFile()};
    }
    TestCertificate certificate_;
};

TEST_F(EncryptedDelivery, NothingButTheGreetingIsSaidBeforeTheEncryption) {
    send(secureServer());
    EXPECT_TRUE(succeeded()) << failure();
    EXPECT_THAT(commands_, ElementsAre(StartsWith("EHLO ["), "STARTTLS", StartsWith("*EHLO ["),
                                       StartsWith("*AUTH PLAIN "), "*MAIL FROM:<me@example.com>",
                                       "*RCPT TO:<a@example.com>", "*RCPT TO:<b@example.com>",
                                       "*DATA", "*QUIT"));
    EXPECT_THAT(received_, HasSubstr("..dot"));
}

TEST_F(EncryptedDelivery, AnEncryptedStartWorksToo) {
    account_.security = MailSecurity::TLS;
    auto behaviour = secureServer();
    behaviour.encrypted = true;
    send(behaviour);
    EXPECT_TRUE(succeeded()) << failure();
    EXPECT_THAT(commands_.front(), StartsWith("*EHLO"));
}

TEST_F(EncryptedDelivery, AServerThatCannotBeTrustedGetsNothing) {
    struct Case {
        const char* name;
        std::vector<std::string> extensions;
        const char* host;
        bool trusted;
        const char* injected;
    };
    const Case cases[] = {
        {"offers no encryption", {"AUTH PLAIN"}, "localhost", true, ""},
        {"nobody vouches for it", {"STARTTLS"}, "localhost", false, ""},
        {"another's certificate", {"STARTTLS"}, "127.0.0.1", true, ""},
        {"speaks too soon", {"STARTTLS"}, "localhost", true, "250 AUTH PLAIN\r\n"},
    };
    for (const Case& each : cases) {
        auto behaviour = secureServer();
        behaviour.extensions = each.extensions;
        behaviour.injected = each.injected;
        account_.host = each.host;
        account_.certificateAuthorityFile = each.trusted ? certificate_.certificateFile() : "";
        send(behaviour);
        EXPECT_FALSE(succeeded()) << each.name;
        for (const std::string& command : commands_)
            EXPECT_TRUE(command.starts_with("EHLO") || command == "STARTTLS")
                << each.name << ": " << command;
    }
}

}
}
