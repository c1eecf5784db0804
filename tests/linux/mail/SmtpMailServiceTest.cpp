#include "platform/linux/mail/SmtpMailService.h"

#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/mail/SmtpTestServer.h"
#include "tests/support/TemporaryFolder.h"

namespace vistrel {
namespace {

class MailServiceTest : public ::testing::Test {
protected:
    MailServiceTest() {
        mail_.to = {"a@example.com"};
        mail_.subject = "Hello";
        mail_.body = "World";
    }
    ~MailServiceTest() override { ::unsetenv("VISTREL_MAIL_PASSWORD"); }

    SettingLookup lookup() {
        return [this](const std::string& group, const std::string& key) {
            const bool isSet = group == "mail" && settings_.contains(key);
            return isSet ? std::optional(settings_[key]) : std::nullopt;
        };
    }
    host::Status send() {
        SmtpMailService service(loop_, files_, lookup());
        std::optional<host::Status> outcome;
        service.sendMail(mail_, {}, [&outcome](host::Status s) { outcome = std::move(s); });
        EXPECT_FALSE(outcome) << "reported before sendMail returned";
        EXPECT_TRUE(turnUntil([&outcome] { return outcome.has_value(); }));
        return outcome.value_or(host::Failure{});
    }
    void useServer(const SmtpTestServer& server) {
        settings_ = {{"host", "127.0.0.1"},
                     {"port", std::to_string(server.port())},
                     {"security", "none"},
                     {"from", "me@example.com"}};
    }

    GLibEventLoop loop_;
    support::TemporaryFolder root_;
    DeviceFiles files_{root_.path()};
    std::map<std::string, std::string> settings_;
    host::OutgoingMail mail_;
};

TEST_F(MailServiceTest, AnAccountNeedsAServerAndASender) {
    using enum MailSecurity;
    using Endpoint = std::pair<int, MailSecurity>;
    const std::pair<std::map<std::string, std::string>, std::optional<Endpoint>> cases[] = {
        {{}, {}},
        {{{"host", "h"}}, {}},
        {{{"host", "h"}, {"user", "me"}}, {}},
        {{{"host", "h"}, {"user", "me@h"}}, {{587, StartTLS}}},
        {{{"host", "h"}, {"from", "me@h"}, {"security", "tls"}}, {{465, TLS}}},
        {{{"host", "h"}, {"from", "me@h"}, {"security", "none"}}, {{25, None}}},
        {{{"host", "h"}, {"from", "me@h"}, {"security", "any"}, {"port", "2525"}},
         {{2525, StartTLS}}},
        {{{"host", "h"}, {"from", "me@h"}, {"port", "70000"}}, {{587, StartTLS}}},
    };
    for (const auto& [settings, expected] : cases) {
        settings_ = settings;
        const auto account = mailAccountFrom(lookup());
        EXPECT_EQ(account ? std::optional(Endpoint(account->port, account->security))
                          : std::nullopt,
                  expected);
        EXPECT_EQ(SmtpMailService(loop_, files_, lookup()).canSendMail(), account.has_value());
    }
}

TEST_F(MailServiceTest, AMailIsBuiltAndDeliveredUnlessSomethingIsMissing) {
    SmtpTestServer server({});
    EXPECT_EQ(send().failure().code, ENOTSUP);
    useServer(server);
    settings_["user"] = "me";
    // No keyring answers here.
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    EXPECT_EQ(send().failure().code, EACCES);
    ::setenv("VISTREL_MAIL_PASSWORD", "pw", 1);
    mail_.to = {"nobody"};
    EXPECT_EQ(send().failure().code, EINVAL);
    EXPECT_TRUE(server.commands().empty());

    mail_.to = {"a@example.com"};
    const auto outcome = send();
    EXPECT_TRUE(outcome.ok()) << outcome.failure().message;
    EXPECT_THAT(server.message(), HasSubstr("Subject: Hello\r\n"));
    EXPECT_THAT(server.commands(), Contains("AUTH PLAIN AG1lAHB3"));
}

TEST_F(MailServiceTest, EachDraftIsAFileAndAFailureToKeepItIsReported) {
    SmtpMailService service(loop_, files_, lookup());
    EXPECT_TRUE(service.saveDraft(mail_).ok());
    EXPECT_TRUE(service.saveDraft(mail_).ok());
    const auto names = files_.list(MailService::kDraftsFolder);
    ASSERT_TRUE(names.ok());
    ASSERT_EQ(names.value().size(), 2U);
    const std::string path = std::string(MailService::kDraftsFolder) + "/" + names.value().front();
    const std::string text = support::contentsOf(files_.machinePath(path));
    EXPECT_THAT(text, HasSubstr("Subject: Hello\r\n"));
    EXPECT_THAT(text, HasSubstr("To: a@example.com\r\n"));

    EXPECT_TRUE(files_.remove("/var/mobile/Library"));
    EXPECT_TRUE(files_.createFile("/var/mobile/Library"));
    EXPECT_FALSE(service.saveDraft(mail_).ok());
}

}
}
