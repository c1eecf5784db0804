#include "ads/Utility/GADMacros.h"
#include "ads/json/GAD_ZelJSON.h"
#include "ads/json/GAD_ZelJSONScan.h"
#include "tests/support/Testing.h"

#include <random>

namespace vistrel {
namespace {
std::string written(const Value& value) {
    return GAD_ZelJSON().stringWithFragment(value).text.value_or("nothing was written");
}

TEST(ZelJSONWriter, WritesEveryKindAndEscapesOnlyWhatMustBe) {
    const std::tuple<Value, const char*> cases[] = {
        {Value::Array{Value(), true, false, -12, 0.1, Value::number("1.50E+2"), "a",
                      Value::Array{}},
         "[null,true,false,-12,0.1,1.50E+2,\"a\",[]]"},
        {Value::Dictionary{}, "{}"},
        {Value::Dictionary{{"b", 1}, {"a", Value::Dictionary{{"", true}}}},
         "{\"b\":1,\"a\":{\"\":true}}"},
        {Value(), "null"},
        {"\"\\/\b\t\n\f\r\x01\x1f\x7f\u00e9\U0001F600",
         "\"\\\"\\\\/\\b\\t\\n\\f\\r\\u0001\\u001f\x7f\u00e9\U0001F600\""},
        {std::string_view("\0", 1), "\"\\u0000\""},
        {Value::date(1296475200.75), "\"2011-01-31 12:00:00 +0000\""},
        {Value::date(-1), "\"1969-12-31 23:59:59 +0000\""},
        {Value::data({std::byte{0}, std::byte{1}, std::byte{2}, std::byte{0xAB}, std::byte{9}}),
         "\"<000102ab 09>\""},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(written(value), text);
}

TEST(ZelJSONWriter, FindsTheCharacterToEscapeAtEveryPlace) {
    for (std::size_t size = 1; size <= 70; ++size) {
        for (std::size_t place = 0; place < size; ++place) {
            std::string text(size, 'x');
            std::string json = written(text);
            text[place] = '\n';
            json.replace(place + 1, 1, "\\n");
            ASSERT_EQ(written(text), json);
        }
    }
    EXPECT_EQ(written(std::string(5000, '\x02')).size(), 5000U * 6 + 2);
}

TEST(ZelJSONWriter, OnlyContainersAreObjects) {
    for (const Value& value : {Value("[]"), Value(1), Value()}) {
        const GAD_ZelJSON::Writing writing = GAD_ZelJSON().stringWithObject(value);
        EXPECT_FALSE(writing.text);
        ASSERT_TRUE(writing.error);
        EXPECT_EQ(writing.error->code(), 4);
        EXPECT_EQ(writing.error->localizedDescription(), "Not valid type for JSON");
    }
    EXPECT_EQ(GAD_ZelJSON().stringWithObject(Value::Array{1}).text, "[1]");
}

TEST(ZelJSONWriter, FormatsForReadingAndSortsKeys) {
    GAD_ZelJSON json;
    json.setSortKeys(true);
    const Value value = Value::Dictionary{
        {"b", Value::Array{1, Value::Array{}, Value::Dictionary{{"z", 1}, {"y", 2}}}},
        {"a", Value::Dictionary{}},
        {"\U0001F600", 1},
        {"\uFB01", 2},
        {"ab", 3},
        {"B", 4}};
    EXPECT_EQ(json.stringWithObject(value).text,
              "{\"B\":4,\"a\":{},\"ab\":3,\"b\":[1,[],{\"y\":2,\"z\":1}],"
              "\"\U0001F600\":1,\"\uFB01\":2}");
    json.setHumanReadable(true);
    EXPECT_EQ(json.stringWithObject(Value::Dictionary{{"b", 1}, {"a", Value::Array{2, 3}}}).text,
              "{\n  \"a\" : [\n    2,\n    3\n  ],\n  \"b\" : 1\n}");
}

TEST(GADMacrosJSON, FailuresYieldAnEmptyTextOrNothing) {
    const Value object = Value::Dictionary{{"a", 1}};
    const Value scalar = 1;
    EXPECT_EQ(GADMacros::jsonify(&object), "{\"a\":1}");
    EXPECT_EQ(GADMacros::jsonify(&scalar), "");
    EXPECT_EQ(GADMacros::jsonify(nullptr), std::nullopt);
    EXPECT_EQ(GADMacros::readJson("{\"a\":1}"), object.dictionary());
    EXPECT_EQ(GADMacros::readJson(std::nullopt), std::nullopt);
    for (const char* text : {"[1]", "{"})
        EXPECT_EQ(GADMacros::readJson(text), std::nullopt) << text;
}

using namespace jsonScan;

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
