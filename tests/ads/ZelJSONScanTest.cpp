#include "ads/json/GAD_ZelJSONScan.h"
#include "tests/support/Testing.h"

#include <random>

namespace vistrel::jsonScan {
namespace {
/// About one byte in twenty is special, or not a digit; zeros follow.
std::string randomText(std::mt19937& random, bool digitsOnly) {
    const std::string odd("\0\x1f\"\\ !/:\x7f\x80\x9f\xa2\xdc\xff.", 15);
    std::string text;
    for (auto left = random() % 80; left > 0; --left) {
        const bool isOdd = random() % 20 == 0;
        text += isOdd        ? odd[random() % odd.size()]
                : digitsOnly ? static_cast<char>('0' + random() % 10)
                             : static_cast<char>(0x23 + random() % 0x30);
    }
    return text + std::string(64, '\0');
}

std::size_t plainLength(const std::string& text) {
    std::size_t length = 0;
    while (!isSpecial(text[length]))
        ++length;
    return length;
}

TEST(ZelJSONScan, BothFormsFindSpecialBytesAndCopyTheSame) {
    std::mt19937 random(5);
    for (int round = 0; round < 20000; ++round) {
        const std::string numbers = randomText(random, true);
        ASSERT_EQ(digits(numbers.data()), portable::digits(numbers.data()));
        const std::string text = randomText(random, false);
        const std::size_t plain = plainLength(text);
        ASSERT_EQ(portable::plainEnd(text.data()), text.data() + plain);
        ASSERT_EQ(plainEnd(text.data()), text.data() + plain);

        std::array<char, 16> copy{};
        std::array<char, 16> portableCopy{};
        ASSERT_EQ(copyPlainBlock(copy.data(), text.data()), plain >= 16);
        ASSERT_EQ(portable::copyPlainBlock(portableCopy.data(), text.data()), plain >= 16);
        ASSERT_EQ(std::string(copy.data(), 16), text.substr(0, 16));
        ASSERT_EQ(copy, portableCopy);

        const std::size_t size = random() % 16;
        std::array<char, 16> shortCopy{};
        ASSERT_EQ(copyShortPlain(shortCopy.data(), text.data(), size), plain >= size);
        ASSERT_EQ(std::string(shortCopy.data(), size), text.substr(0, size));
        ASSERT_EQ(shortCopy[size], '\0') << "wrote too far";
    }
}
}
}
