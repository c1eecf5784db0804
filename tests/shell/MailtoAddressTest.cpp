#include "shell/MailtoAddress.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(MailtoAddress, EveryCharacterStaysInItsField) {
    const std::array<const char*, 5> cases[] = {
        {"plain", "a@example.com", "Hello", "World",
         "mailto:a@example.com?subject=Hello&body=World"},
        {"percent and ampersand", "a@example.com", "100% R&D", "a=b&cc=x@y?z#f",
         "mailto:a@example.com?subject=100%25%20R%26D&body=a%3Db%26cc%3Dx%40y%3Fz%23f"},
        {"an escape is text", "a@example.com", "%0D%0ABcc: x", "%41",
         "mailto:a@example.com?subject=%250D%250ABcc%3A%20x&body=%2541"},
        {"quotes and plus", "a@example.com", "\"a\" 'b' <c>", "1+1\\",
         "mailto:a@example.com?subject=%22a%22%20%27b%27%20%3Cc%3E&body=1%2B1%5C"},
        {"every kind of line break", "a@example.com", "s", "a\nb\r\nc\rd\n\n",
         "mailto:a@example.com?subject=s&body=a%0D%0Ab%0D%0Ac%0D%0Ad%0D%0A%0D%0A"},
        {"umlauts", "a@example.com", "Grüße", "€ \xF0\x9F\x8E\xAC",
         "mailto:a@example.com?subject=Gr%C3%BC%C3%9Fe&body=%E2%82%AC%20%F0%9F%8E%AC"},
        {"a recipient that tries more", "a?bcc=b,c&d@example.com", "", "",
         "mailto:a%3Fbcc%3Db%2Cc%26d@example.com?subject=&body="},
        {"a quoted at sign", "\"a@b\"@example.com", "", "",
         "mailto:%22a%40b%22@example.com?subject=&body="},
    };
    for (const auto& [name, recipient, subject, body, address] : cases)
        EXPECT_EQ(mailtoAddress(recipient, subject, body), address) << name;
}

}
}
