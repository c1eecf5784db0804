#include "platform/linux/crypto/LibraryCrypto.h"
#include "tests/support/Testing.h"

#include <cstddef>

namespace vistrel {
namespace {

std::vector<std::byte> bytesOfHex(std::string_view hex) {
    std::vector<std::byte> bytes;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 2)
        bytes.push_back(
            static_cast<std::byte>(std::stoi(std::string(hex.substr(at, 2)), nullptr, 16)));
    return bytes;
}

host::Crypto::Block blockOfHex(std::string_view hex) {
    host::Crypto::Block block{};
    const auto bytes = bytesOfHex(hex);
    std::copy_n(bytes.begin(), block.size(), block.begin());
    return block;
}

/// The test suite of RFC 1321, A.5.
TEST(LibraryCrypto, DigestsAsRFC1321Does) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& [text, digest] : cases)
        EXPECT_EQ(LibraryCrypto().md5(std::as_bytes(std::span(text))), blockOfHex(digest)) << text;
}

TEST(LibraryCrypto, EncryptsAsTheStandardsDo) {
    const struct {
        const char* name;
        const char* key;
        const char* vector;
        const char* text;
        const char* cipher;
    } cases[] = {
        {"FIPS 197, C.1: a zero vector makes one block the plain cipher",
         "000102030405060708090a0b0c0d0e0f", "00000000000000000000000000000000",
         "00112233445566778899aabbccddeeff", "69c4e0d86a7b0430d8cdb78070b4c55a"},
        {"NIST SP 800-38A, F.2.1: chained blocks", "2b7e151628aed2a6abf7158809cf4f3c",
         "000102030405060708090a0b0c0d0e0f",
         "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
         "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710",
         "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
         "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7"},
    };
    for (const auto& each : cases) {
        const auto cipher = LibraryCrypto().aes128CBCEncrypt(
            blockOfHex(each.key), blockOfHex(each.vector), bytesOfHex(each.text));
        ASSERT_TRUE(cipher.ok()) << each.name;
        EXPECT_EQ(cipher.value(), bytesOfHex(each.cipher)) << each.name;
    }
}

TEST(LibraryCrypto, ATextThatIsNotWholeBlocksFails) {
    const std::vector<std::byte> text(17);
    const auto cipher = LibraryCrypto().aes128CBCEncrypt({}, {}, text);
    ASSERT_FALSE(cipher.ok());
    EXPECT_THAT(cipher.failure().message, HasSubstr("cannot be encrypted"));
}

}
}
