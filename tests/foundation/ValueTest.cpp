#include "platform/foundation/Value.h"
#include "platform/foundation/ValueBuilder.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

constexpr const char* kLongText = "a text that is too long to stand in the value itself";

std::vector<std::string> keysOf(const Value::Dictionary& dictionary) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : dictionary)
        keys.emplace_back(key);
    return keys;
}

Value expectedValue() {
    return Value::Dictionary{{"list", Value::Array{kLongText, 1, Value::Array{}}},
                             {"text", kLongText}};
}

TEST(Value, NumbersKeepTheirDecimal) {
    const std::tuple<Value, const char*> cases[] = {
        {0, "0"},
        {-7, "-7"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"},
        {0.1, "0.1"},
        {30.0, "30"},
        {-2.5e-9, "-2.5e-09"},
        {Value::number("1.50"), "1.50"},
        {Value::number("123456789012345678901234567890"), "123456789012345678901234567890"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(value.numberText(), text);
    for (const char* text : {"", "01", "1.", ".5", "+1", "1e", "-", "1 ", "0x1", "nan"})
        EXPECT_TRUE(Value::number(text).isNull()) << text;
    EXPECT_TRUE(Value(std::numeric_limits<double>::infinity()).isNull());
    EXPECT_TRUE(Value(std::numeric_limits<double>::quiet_NaN()).isNull());
}

TEST(Value, NumbersConvertToTheNearestRepresentable) {
    const std::tuple<const char*, std::int64_t, double> cases[] = {
        {"12.99", 12, 12.99},
        {"-12.99", -12, -12.99},
        {"1e3", 1000, 1000},
        {"9007199254740993", 9007199254740993, 9007199254740992.0},
        {"9223372036854775808", std::numeric_limits<std::int64_t>::max(), 9223372036854775808.0},
        {"-1e999", std::numeric_limits<std::int64_t>::min(),
         -std::numeric_limits<double>::infinity()},
        {"1e-999", 0, 0},
        {"0.0000001e400", std::numeric_limits<std::int64_t>::max(),
         std::numeric_limits<double>::infinity()},
    };
    for (const auto& [text, integer, real] : cases) {
        EXPECT_EQ(Value::number(text).integerValue(), integer) << text;
        EXPECT_EQ(Value::number(text).doubleValue(), real) << text;
    }
}

TEST(Value, NumbersAreEqualAsDecimals) {
    const auto equal = [](const char* a, const char* b) {
        return Value::number(a) == Value::number(b);
    };
    EXPECT_TRUE(equal("1.50", "15e-1"));
    EXPECT_TRUE(equal("100", "1E2"));
    EXPECT_TRUE(equal("-0.0", "0e7"));
    EXPECT_TRUE(equal("0.001e5", "100"));
    EXPECT_FALSE(equal("1", "-1"));
    EXPECT_FALSE(equal("9007199254740993", "9007199254740992"));
    EXPECT_FALSE(equal("1e99999999999999999999", "1e-99999999999999999999"));
    EXPECT_NE(Value(1), Value(true));
    EXPECT_NE(Value(1), Value("1"));
}

TEST(Value, ReadingAnotherKindGivesItsEmptyValue) {
    Value values[] = {{}, true, 5, kLongText, Value::date(9), Value::data({std::byte{1}})};
    for (Value& value : values) {
        EXPECT_TRUE(value.array().empty());
        EXPECT_EQ(value.mutableArray(), nullptr);
        EXPECT_EQ(value.mutableDictionary(), nullptr);
        EXPECT_TRUE(value.dictionary().empty());
        EXPECT_EQ(value.find("a"), nullptr);
        EXPECT_EQ(value.isString() ? "" : value.string(), "");
        EXPECT_EQ(value.isNumber() ? "" : value.numberText(), "");
        EXPECT_EQ(value.isNumber() ? 0 : value.integerValue(), 0);
        EXPECT_EQ(value.isDate() ? 0 : value.dateValue(), 0);
        EXPECT_EQ(value.isData() ? 0 : value.dataValue().size(), 0U);
        EXPECT_EQ(value.isBoolean() ? false : value.boolean(), false);
    }
    const Value array = Value::Array{1};
    EXPECT_EQ(array.string(), "");
    EXPECT_EQ(array.boolean(), false);
    EXPECT_TRUE(array.dictionary().empty());
}

TEST(Value, CopiesAreIndependent) {
    const Value original = expectedValue();
    Value copy = original;
    copy.mutableDictionary()->find("list")->mutableArray()->push_back("more");
    copy.mutableDictionary()->set("text", "short");
    EXPECT_EQ(original, expectedValue());
    EXPECT_EQ(copy.find("list")->array().size(), 4U);
    EXPECT_NE(copy, original);

    copy = *copy.find("list");
    EXPECT_EQ(copy.array()[0].string(), kLongText);
    copy = std::move((*copy.mutableArray())[2]);
    EXPECT_EQ(copy, Value(Value::Array{}));
}

TEST(Value, DictionariesKeepTheOrderOfTheirKeys) {
    Value::Dictionary dictionary{{"b", 1}, {"a", 2}, {"b", 3}, {kLongText, 4}};
    EXPECT_THAT(keysOf(dictionary), ElementsAre("b", "a", kLongText));
    EXPECT_EQ(dictionary.find("b")->integerValue(), 3);
    EXPECT_TRUE(dictionary.erase("a"));
    EXPECT_FALSE(dictionary.erase("a"));
    dictionary.set("a", 5);
    EXPECT_THAT(keysOf(dictionary), ElementsAre("b", kLongText, "a"));
    EXPECT_EQ(dictionary, (Value::Dictionary{{"a", 5}, {kLongText, 4}, {"b", 3}}));
    EXPECT_NE(dictionary, (Value::Dictionary{{"a", 5}, {kLongText, 4}, {"c", 3}}));
    EXPECT_NE(dictionary, (Value::Dictionary{{"a", 5}, {kLongText, 4}, {"b", 4}}));
    EXPECT_NE(dictionary, (Value::Dictionary{{"a", 5}, {kLongText, 4}}));
}

TEST(Value, ADictionaryAcceptsKeysThatItOwns) {
    Value::Dictionary dictionary{{"1", kLongText}, {"2", 2}};
    dictionary.set(dictionary.find("1")->string(), "grown");
    EXPECT_EQ(dictionary.find(kLongText)->string(), "grown");
    EXPECT_TRUE(dictionary.erase(dictionary.begin()->key));
    EXPECT_THAT(keysOf(dictionary), ElementsAre("2", kLongText));
}

TEST(Value, ARepeatedKeyKeepsItsFirstPlaceAndLastValue) {
    std::vector<Value::Dictionary::Member> members;
    for (int i = 0; i < 1000; ++i)
        members.push_back({std::to_string(i * 7 % 100), i});
    const Value::Dictionary dictionary(std::move(members));
    ASSERT_EQ(dictionary.size(), 100U);
    EXPECT_EQ(std::next(dictionary.begin(), 2)->key, "14");
    EXPECT_EQ(dictionary.find("14")->integerValue(), 902);
}

TEST(Value, ABuilderNestsContainersAndDropsTheAbandoned) {
    ValueBuilder builder;
    builder.openDictionary();
    builder.pushKey("list");
    builder.openArray();
    builder.push(kLongText);
    builder.push(1);
    builder.openArray();
    builder.close();
    EXPECT_FALSE(builder.isInDictionary());
    builder.close();
    builder.pushKey("text");
    builder.push("replaced");
    builder.pushKey("text");
    builder.openDictionary();
    builder.pushKey("dropped");
    builder.push(2);
    builder.abandon();
    EXPECT_EQ(builder.lastKey(), "text");
    EXPECT_EQ(builder.openContainers(), 1U);
    builder.push(kLongText);
    builder.close();
    EXPECT_EQ(builder.finish(), expectedValue());
}

TEST(Value, DestroyingADeepValueDoesNotExhaustTheStack) {
    Value value = kLongText;
    for (int i = 0; i < 250'000; ++i) {
        Value::Array array;
        array.push_back(std::move(value));
        value = Value::Dictionary();
        value.mutableDictionary()->set("k", std::move(array));
    }
    EXPECT_TRUE(value.isDictionary());
    value = Value();
    EXPECT_TRUE(value.isNull());
}
}
}
