#include "ads/encoding/GAD_StringEncoding.h"
#include "tests/support/Testing.h"

#include <bit>
#include <bitset>
#include <numeric>
#include <random>

namespace vistrel {
namespace {
using Encoding = std::shared_ptr<GAD_StringEncoding>;

std::string allASCII() {
    std::string all(128, '\0');
    std::iota(all.begin(), all.end(), '\0');
    return all;
}

std::string hexOf(const std::optional<std::vector<std::byte>>& bytes) {
    return bytes ? GAD_StringEncoding::hexStringEncoding()->encode(*bytes) : "nothing";
}

const Encoding kBinary = GAD_StringEncoding::binaryStringEncoding();
const Encoding kHex = GAD_StringEncoding::hexStringEncoding();
const Encoding kBase32 = GAD_StringEncoding::rfc4648Base32StringEncoding();
const Encoding kBase32Hex = GAD_StringEncoding::rfc4648Base32HexStringEncoding();
const Encoding kCrockford = GAD_StringEncoding::crockfordBase32StringEncoding();
const Encoding kBase64 = GAD_StringEncoding::rfc4648Base64StringEncoding();
const Encoding kWebsafe = GAD_StringEncoding::rfc4648Base64WebsafeStringEncoding();

TEST(StringEncoding, EncodesAndDecodes) {
    const std::tuple<Encoding, const char*, const char*> cases[] = {
        {kBinary, "a\x01", "0110000100000001"},
        {kHex, "\xC3\xA9jk", "C3A96A6B"},
        {kBase32, "f", "MY======"},
        {kBase32, "fo", "MZXQ===="},
        {kBase32, "foo", "MZXW6==="},
        {kBase32, "foob", "MZXW6YQ="},
        {kBase32, "fooba", "MZXW6YTB"},
        {kBase32Hex, "foobar", "CPNMUOJ1E8======"},
        {kCrockford, "foobar", "CSQPYRK1E8"},
        {kBase64, "f", "Zg=="},
        {kBase64, "Ma", "TWE="},
        {kBase64, "foobar", "Zm9vYmFy"},
        {kBase64, "\xC3\xBF\xC3\xBE?~", "w7/Dvj9+"},
        {kWebsafe, "\xC3\xBF\xC3\xBE?~", "w7_Dvj9-"},
        {kBase64, "", ""},
    };
    for (const auto& [encoding, text, encoded] : cases) {
        EXPECT_EQ(encoding->encodeString(text), encoded);
        EXPECT_EQ(encoding->stringByDecoding(encoded), text);
    }
    EXPECT_EQ(kHex->stringByDecoding("C3"), std::nullopt) << "not UTF-8";
    EXPECT_EQ(kHex->stringByDecoding("C"), std::nullopt);
    EXPECT_EQ(kHex->description(), "<Base16 StringEncoder: 0123456789ABCDEF>");
}

TEST(StringEncoding, DecodesWithAndWithoutPadding) {
    const std::tuple<Encoding, const char*, std::vector<std::string_view>> cases[] = {
        {kBase64, "4D61", {"TWE", "TWE=", "TWE====="}},
        {kBase64, "", {"="}},
        {kBase64, "nothing", {"TWF=", "TW=E", "TW E", "TWE\xC3\xA9", "-_=="}},
        {kWebsafe, "FBFF", {"-_8="}},
        {kHex, "DEAD", {"dead"}},
        {kHex, "DE", {"DE0"}},
        {kHex, "nothing", {"DEA", "DE="}},
        {kCrockford, "0040", {"oLOo"}},
        {kCrockford, "nothing", {"0i0I", "U0"}},
        {kBinary, "01", {"000000010"}},
        {kBinary, "nothing", {"000000011"}},
    };
    for (const auto& [encoding, bytes, texts] : cases)
        for (const auto text : texts)
            EXPECT_EQ(hexOf(encoding->decode(text)), bytes) << text;
}

TEST(StringEncoding, RefusesOtherAlphabets) {
    const std::string all = allASCII();
    EXPECT_NE(GAD_StringEncoding::stringEncodingWithString(all), nullptr);
    EXPECT_NE(GAD_StringEncoding::stringEncodingWithString("ab"), nullptr);
    using namespace std::literals;
    for (const std::string& alphabet :
         {""s, "a"s, "abc"s, "aa"s, "abca"s, "ab\xC3\xA9"s, all + all})
        EXPECT_EQ(GAD_StringEncoding::stringEncodingWithString(alphabet), nullptr) << alphabet;
}

TEST(StringEncoding, PaddingFillsBlocks) {
    const auto base4 = GAD_StringEncoding::stringEncodingWithString("abcd");
    const auto base8 = GAD_StringEncoding::stringEncodingWithString("01234567");
    for (const auto& encoding : {base4, base8}) {
        encoding->setPaddingChar('.');
        encoding->setDoPad(true);
    }
    EXPECT_EQ(base4->encodeString("\x1B"), "abcd");
    EXPECT_EQ(base8->encodeString("\x01"), "002.....");
    EXPECT_EQ(hexOf(base8->decode("002.....")), "01");
    base8->setDoPad(false);
    EXPECT_EQ(base8->encodeString("\x01"), "002");
}

TEST(StringEncoding, SynonymsAndIgnoredCharactersChangeOnlyDecoding) {
    const auto encoding = GAD_StringEncoding::stringEncodingWithString("ABCD");
    encoding->addDecodeSynonyms("xAaBbx");
    encoding->ignoreCharacters(" \n");
    EXPECT_EQ(hexOf(encoding->decode("aB bA\n")), "14");
    EXPECT_EQ(hexOf(encoding->decode("xAAA")), "40") << "x follows b and means B";
    EXPECT_EQ(hexOf(encoding->decode("cAAA")), "nothing");
    EXPECT_EQ(encoding->encodeString("\x14"), "ABBA");

    const auto unmapped = GAD_StringEncoding::stringEncodingWithString("ABCD");
    unmapped->addDecodeSynonyms("xA");
    EXPECT_EQ(hexOf(unmapped->decode("xAAA")), "nothing");
}

/// The definition, bit by bit.
std::string encodedBitwise(const std::string& alphabet, const std::vector<std::byte>& bytes) {
    std::string bits;
    for (const std::byte byte : bytes)
        bits += std::bitset<8>(std::to_integer<unsigned>(byte)).to_string();
    const auto width = static_cast<std::size_t>(std::countr_zero(alphabet.size()));
    bits.resize((bits.size() + width - 1) / width * width, '0');
    std::string text;
    for (std::size_t bit = 0; bit < bits.size(); bit += width)
        text += alphabet[std::stoul(bits.substr(bit, width), nullptr, 2)];
    return text;
}

/// Every other one has printable characters only.
std::string randomAlphabet(std::mt19937& random, std::size_t size) {
    std::string all = allASCII();
    if (size < 128 && random() % 2 == 0)
        all.erase(0, 33);
    std::shuffle(all.begin(), all.end(), random);
    return all.substr(0, size);
}

std::vector<std::byte> randomBytes(std::mt19937& random, std::size_t size) {
    std::vector<std::byte> bytes(size);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random());
    return bytes;
}

class StringEncodingOfBase : public testing::TestWithParam<unsigned> {};

TEST_P(StringEncodingOfBase, AgreesWithItsDefinition) {
    std::mt19937 random(GetParam());
    for (std::size_t size = 0; size < 300; ++size) {
        const std::string alphabet = randomAlphabet(random, GetParam());
        const auto encoding = GAD_StringEncoding::stringEncodingWithString(alphabet);
        const std::vector<std::byte> bytes = randomBytes(random, size);
        const std::string text = encoding->encode(bytes);
        ASSERT_EQ(text, encodedBitwise(alphabet, bytes));
        // In memory that ends with the text, so that sanitizers find reads beyond it.
        const std::vector<char> copy(text.begin(), text.end());
        ASSERT_EQ(encoding->decode({copy.data(), copy.size()}), bytes);
    }
}

TEST_P(StringEncodingOfBase, FindsOneBadOrIgnoredCharacterAnywhere) {
    std::mt19937 random(GetParam());
    const std::string alphabet = randomAlphabet(random, GetParam());
    const auto encoding = GAD_StringEncoding::stringEncodingWithString(alphabet);
    std::string bad = "\x80\xFF";
    for (const char c : allASCII()) {
        if (alphabet.find(c) == std::string::npos)
            bad += c;
    }
    const std::vector<std::byte> bytes = randomBytes(random, 672);
    const std::string text = encoding->encode(bytes);
    for (std::size_t place = 0; place < text.size(); ++place) {
        std::string broken = text;
        broken[place] = bad[random() % bad.size()];
        ASSERT_EQ(encoding->decode(broken), std::nullopt) << place;
    }
    if (GetParam() == 128)
        return;
    const char ignored = bad.back();
    encoding->ignoreCharacters(std::string(1, ignored));
    for (const std::size_t run : {1U, 7U, 32U, 64U, 76U, 200U}) {
        std::string spaced = text;
        for (std::size_t place = run; place < spaced.size(); place += run + 1)
            spaced.insert(place, 1, ignored);
        ASSERT_EQ(encoding->decode(spaced), bytes) << run;
    }
}

INSTANTIATE_TEST_SUITE_P(Bases, StringEncodingOfBase,
                         testing::Values(2U, 4U, 8U, 16U, 32U, 64U, 128U));
}
}
