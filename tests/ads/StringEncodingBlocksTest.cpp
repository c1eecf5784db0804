#include "ads/encoding/GAD_StringEncodingBlocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <ostream>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vistrel::stringEncodingBlocks {
namespace {
std::string shuffledCharacters(std::mt19937& random) {
    std::string characters(95, '\0');
    std::iota(characters.begin(), characters.end(), ' ');
    std::shuffle(characters.begin(), characters.end(), random);
    return characters;
}

ReverseMap reverseOf(const std::string& alphabet) {
    ReverseMap values;
    values.fill(-1);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        values[static_cast<unsigned char>(alphabet[i])] = static_cast<std::int8_t>(i);
    return values;
}

struct Form {
    const char* name;
    bool (*isAvailable)();
    Blocks (*blocksFor)(unsigned shift);
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

constexpr Form kForms[] = {{"AVX2", avx2::isAvailable, avx2::blocksFor},
                           {"VBMI", vbmi::isAvailable, vbmi::blocksFor}};

class VectorBlocks : public testing::TestWithParam<std::tuple<Form, unsigned>> {
protected:
    void SetUp() override {
        if (!std::get<Form>(GetParam()).isAvailable())
            GTEST_SKIP() << "this processor has no " << std::get<Form>(GetParam()).name;
        blocks = std::get<Form>(GetParam()).blocksFor(shift);
    }
    const unsigned shift = std::get<unsigned>(GetParam());
    Blocks blocks{};
    const Blocks portableBlocks = portable::blocksFor(shift);
};

TEST_P(VectorBlocks, EncodeAsThePortableOnes) {
    std::mt19937 random(shift);
    for (std::size_t size = 0; size < 400; ++size) {
        const std::string alphabet = shuffledCharacters(random);
        std::vector<unsigned char> bytes(size);
        std::generate(bytes.begin(), bytes.end(), [&] { return random() & 0xFF; });
        const std::size_t length = size * 8 / shift;
        std::vector<char> fast(length);
        std::vector<char> portable(length);
        const std::size_t done = blocks.encode(alphabet.data(), bytes.data(), size, fast.data());
        portableBlocks.encode(alphabet.data(), bytes.data(), size, portable.data());
        ASSERT_GE(done + 32, size) << "too little was done at once";
        ASSERT_TRUE(std::equal(fast.begin(),
                               fast.begin() + static_cast<std::ptrdiff_t>(done * 8 / shift),
                               portable.begin()))
            << size;
    }
}

TEST_P(VectorBlocks, DecodeAsThePortableOnes) {
    std::mt19937 random(shift);
    for (std::size_t size = 0; size < 400; ++size) {
        const std::string alphabet = shuffledCharacters(random).substr(0, 1U << shift);
        const ReverseMap values = reverseOf(alphabet);
        std::vector<char> text(size);
        std::generate(text.begin(), text.end(),
                      [&] { return alphabet[random() % alphabet.size()]; });
        // Now and then a character without a value, which must stop either form before it.
        std::size_t good = size;
        if (size != 0 && random() % 2 == 0) {
            good = random() % size;
            text[good] = static_cast<char>(random() % 2 ? 0x80 + random() % 0x80 : random() % 32);
        }
        std::vector<unsigned char> fast(size * shift / 8);
        std::vector<unsigned char> portable(size * shift / 8);
        const std::size_t done = blocks.decode(values, text.data(), size, fast.data());
        const std::size_t portablyDone =
            portableBlocks.decode(values, text.data(), size, portable.data());
        ASSERT_LE(done, portablyDone);
        ASSERT_LE(portablyDone, good);
        ASSERT_GE(done + 128, good) << "too little was done at once";
        ASSERT_TRUE(std::equal(fast.begin(),
                               fast.begin() + static_cast<std::ptrdiff_t>(done * shift / 8),
                               portable.begin()))
            << size;
    }
}

TEST_P(VectorBlocks, ControlCharactersMayHaveValues) {
    ReverseMap values;
    values.fill(-1);
    values['\n'] = 1;
    const std::string text(200, '\n');
    std::vector<unsigned char> fast(200 * shift / 8);
    std::vector<unsigned char> portable(200 * shift / 8);
    const std::size_t done = blocks.decode(values, text.data(), text.size(), fast.data());
    portableBlocks.decode(values, text.data(), text.size(), portable.data());
    EXPECT_TRUE(std::equal(fast.begin(),
                           fast.begin() + static_cast<std::ptrdiff_t>(done * shift / 8),
                           portable.begin()));
}

INSTANTIATE_TEST_SUITE_P(FormsAndShifts, VectorBlocks,
                         testing::Combine(testing::ValuesIn(kForms), testing::Values(4U, 5U, 6U)));

#if defined(__x86_64__)
/// Whether the processor holds anything in the upper halves of its vector registers. While it
/// does, plain vector code that follows runs several times slower.
__attribute__((target("xsave"))) bool upperHalvesAreInUse() {
    constexpr unsigned kInUse = 1;
    constexpr unsigned kUpperHalves = 1U << 2;
    unsigned low = 0;
    unsigned high = 0;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(kInUse));
    return (low & kUpperHalves) != 0;
}

TEST_P(VectorBlocks, LeaveNothingInTheUpperHalvesOfRegisters) {
    asm volatile("vpcmpeqd %%ymm3, %%ymm3, %%ymm3" ::: "xmm3");
    if (!upperHalvesAreInUse())
        GTEST_SKIP() << "this processor does not tell";
    asm volatile("vzeroupper");
    ASSERT_FALSE(upperHalvesAreInUse());

    const std::string alphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz+/";
    const ReverseMap values = reverseOf(alphabet.substr(0, 1U << shift));
    std::vector<unsigned char> bytes(240, 0x5A);
    std::vector<char> text(480);
    ASSERT_GT(blocks.encode(alphabet.data(), bytes.data(), bytes.size(), text.data()), 0U);
    EXPECT_FALSE(upperHalvesAreInUse());
    text.assign(480, '7');
    asm volatile("vzeroupper");
    ASSERT_GT(blocks.decode(values, text.data(), 320, bytes.data()), 0U);
    EXPECT_FALSE(upperHalvesAreInUse());
}
#endif
}
}
