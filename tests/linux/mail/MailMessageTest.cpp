#include "platform/linux/mail/MailMessage.h"
#include "tests/support/Testing.h"

#include <regex>

namespace vistrel {
namespace {

using ::testing::AnyOf;
using ::testing::Not;

host::OutgoingMail mailTo(const std::string& recipient) {
    host::OutgoingMail mail;
    mail.to = {recipient};
    mail.subject = "Hello";
    mail.body = "World";
    return mail;
}

std::string built(const host::OutgoingMail& mail) {
    const auto message = mailMessage(mail, "Me <me@example.com>");
    EXPECT_TRUE(message.ok()) << (message.ok() ? "" : message.failure().message);
    return message.ok() ? message.value().bytes : std::string();
}

std::string bodyOf(const std::string& bytes) {
    return bytes.substr(bytes.find("\r\n\r\n") + 4);
}

/// Names of the header fields in their order; folded lines belong to the one before.
std::vector<std::string> fieldNames(const std::string& bytes) {
    std::vector<std::string> names;
    std::istringstream lines(bytes.substr(0, bytes.find("\r\n\r\n") + 2));
    for (std::string line; std::getline(lines, line);) {
        if (line.front() != ' ' && line.front() != '\t')
            names.push_back(line.substr(0, line.find(':')));
    }
    return names;
}

TEST(MailMessage, APlainMailIsWrittenToTheByte) {
    auto mail = mailTo("you@example.com");
    mail.cc = {"\"Doe, Jane\" <jane@example.com>"};
    mail.body = "First\nsecond\r\n.dot\rend";
    const std::regex date("Date: (Mon|Tue|Wed|Thu|Fri|Sat|Sun), [0-9]{2} "
                          "(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [0-9]{4} "
                          "[0-9]{2}:[0-9]{2}:[0-9]{2} [+-][0-9]{4}\r\n");
    const std::regex identifier("Message-Id: <[0-9a-f-]{36}@example.com>");
    EXPECT_EQ(std::regex_replace(std::regex_replace(built(mail), date, "Date: DATE\r\n"),
                                 identifier, "Message-Id: ID"),
              "Date: DATE\r\n"
              "From: Me <me@example.com>\r\n"
              "Subject: Hello\r\n"
              "To: you@example.com\r\n"
              "Cc: \"Doe, Jane\" <jane@example.com>\r\n"
              "Message-Id: ID\r\n"
              "MIME-Version: 1.0\r\n"
              "Content-Type: text/plain; charset=utf-8\r\n"
              "Content-Transfer-Encoding: 7bit\r\n"
              "\r\n"
              "First\r\nsecond\r\n.dot\r\nend\r\n");
}

TEST(MailMessage, NoFieldCanInjectAHeaderLine) {
    const auto plain = fieldNames(built(mailTo("a@example.com")));
    const std::vector<std::string> hostile = {
        "x\r\nBcc: evil@example.com",       "x\nBcc: evil@example.com",
        "x\rBcc: evil@example.com",         "x\r\n\r\n<script>",
        "x\n\n.\r\nMAIL FROM:<e@e>",        "\r\nBcc: evil@example.com",
        std::string("x\0\r\nBcc: e@e", 12), "x\v\fBcc: e@e\x7F",
    };
    for (const std::string& text : hostile) {
        auto subject = mailTo("a@example.com");
        subject.subject = text;
        EXPECT_EQ(fieldNames(built(subject)), plain) << text;
        EXPECT_EQ(bodyOf(built(subject)), "World\r\n") << text;
        const auto message =
            mailMessage(mailTo("\"" + text + "\" <a@example.com>"), "me@example.com");
        if (message.ok()) {
            EXPECT_EQ(fieldNames(message.value().bytes), plain) << text;
            EXPECT_THAT(message.value().recipients, ElementsAre("a@example.com"));
        }
        for (const std::string& address : {text, "a@example.com" + text, text + "@example.com"})
            EXPECT_FALSE(mailMessage(mailTo(address), "me@example.com").ok()) << address;
    }
}

TEST(MailMessage, TextOutsideASCIIIsEncodedInSevenBits) {
    auto mail = mailTo("Jürgen <j@example.com>");
    mail.subject =
        "Grüße — 日本語 and a subject that is so long that it has to be folded somewhere";
    mail.body = "Zoë = 100%\nFrom here on: " + std::string(3000, 'x');
    const std::string bytes = built(mail);
    EXPECT_THAT(bytes, HasSubstr("To: =?UTF-8?b?SsO8cmdlbg==?= <j@example.com>\r\n"));
    EXPECT_THAT(bytes, HasSubstr("Subject: =?UTF-8?B?R3LDvMOfZSDigJQg5pel5pys6Kqe?= and a"));
    EXPECT_THAT(bytes, HasSubstr("Content-Transfer-Encoding: quoted-printable\r\n"));
    EXPECT_THAT(bodyOf(bytes), HasSubstr("Zo=C3=AB =3D 100%\r\n"));
    std::istringstream lines(bytes);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 79U);
        EXPECT_TRUE(line.ends_with('\r')) << line;
        for (const char c : line)
            EXPECT_LT(static_cast<unsigned char>(c), 0x7F);
    }
}

TEST(MailMessage, InvalidUTF8IsReplaced) {
    auto mail = mailTo("a@example.com");
    mail.subject = "a\xFF\xC3";
    mail.body = std::string("b\xFE\0c", 4);
    EXPECT_THAT(built(mail), HasSubstr("Subject: =?UTF-8?B?Ye+/ve+/vQ==?=\r\n"));
    EXPECT_THAT(bodyOf(built(mail)), HasSubstr("b=EF=BF=BDc"));
}

TEST(MailMessage, HiddenRecipientsAreOnlyInTheEnvelope) {
    auto mail = mailTo("a@example.com");
    mail.cc = {"b@example.com", "a@example.com"};
    mail.bcc = {"Secret <hidden@example.com>"};
    const auto message = mailMessage(mail, "me@example.com");
    ASSERT_TRUE(message.ok());
    EXPECT_EQ(message.value().sender, "me@example.com");
    EXPECT_THAT(message.value().recipients,
                ElementsAre("a@example.com", "b@example.com", "hidden@example.com"));
    EXPECT_THAT(message.value().bytes, Not(AnyOf(HasSubstr("hidden"), HasSubstr("Secret"))));
}

TEST(MailMessage, AnInvalidAddressIsRefused) {
    for (const char* text :
         {"", " ", "nobody", "@example.com", "a@", "a b@example.com", "a@example.com b@example.com",
          "a@example.com, b@example.com", "group: a@example.com;", "<>"})
        EXPECT_FALSE(mailMessage(mailTo(text), "me@example.com").ok()) << text;
    EXPECT_FALSE(mailMessage({}, "me@example.com").ok());
    EXPECT_FALSE(mailMessage(mailTo("a@example.com"), "nobody").ok());
}

TEST(MailMessage, ADraftKeepsWhatWasTyped) {
    auto mail = mailTo("not yet an address");
    mail.bcc = {"hidden@example.com"};
    const std::string draft = draftBytes(mail, "me@example.com");
    for (const char* typed :
         {"not yet an address", "Bcc: hidden@example.com\r\n", "Subject: Hello\r\n"})
        EXPECT_THAT(draft, HasSubstr(typed));
    EXPECT_EQ(bodyOf(draft), "World\r\n");
}

}
}
