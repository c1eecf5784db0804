#include "platform/foundation/Value.h"
#include "platform/foundation/ValueBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace vistrel {
namespace {
using testing::ElementsAre;

constexpr const char* kLongText = "a text that is too long to stand in the value itself";

std::vector<std::string> keysOf(const Value::Dictionary& dictionary) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : dictionary)
        keys.emplace_back(key);
    return keys;
}

/// {"list":["long text",1,[]],"text":"long text"} as a reader would build it.
Value builtValue() {
    const std::string text = std::string("list text ") + kLongText + " 1";
    ValueBuilder builder(text);
    const std::string_view copy(builder.text(), text.size());
    const std::string_view longText = copy.substr(10, copy.size() - 12);
    builder.openDictionary();
    builder.pushString(copy.substr(0, 4));
    builder.openArray();
    builder.pushString(longText);
    builder.pushNumber(copy.substr(copy.size() - 1));
    builder.openArray();
    builder.close();
    builder.close();
    builder.pushString(copy.substr(5, 4));
    builder.pushString(longText);
    builder.close();
    return builder.finish();
}

Value expectedValue() {
    return Value::Dictionary{{"list", Value::Array{kLongText, 1, Value::Array{}}},
                             {"text", kLongText}};
}

TEST(Value, NumbersKeepTheirDecimal) {
    const struct {
        Value value;
        const char* text;
    } cases[] = {
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

TEST(Value, NumbersConvertToTheNearestThatFits) {
    const struct {
        const char* text;
        std::int64_t integer;
        double real;
    } cases[] = {
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
        value.array().push_back(1);
        EXPECT_TRUE(value.array().empty());
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
    copy.dictionary().find("list")->array().push_back("more");
    copy.dictionary().set("text", "short");
    EXPECT_EQ(original, expectedValue());
    EXPECT_EQ(copy.find("list")->array().size(), 4U);
    EXPECT_NE(copy, original);

    copy = *copy.find("list");
    EXPECT_EQ(copy.array()[0].string(), kLongText);
    copy = std::move(copy.array()[2]);
    EXPECT_EQ(copy, Value(Value::Array{}));
}

TEST(Value, ArraysGrowAndCloseGaps) {
    Value value = Value::Array{};
    for (int i = 0; i < 100; ++i)
        value.array().push_back(i % 2 ? Value(i) : Value(kLongText + std::to_string(i)));
    value.array().removeAt(0);
    value.array().removeAt(98);
    ASSERT_EQ(value.array().size(), 98U);
    EXPECT_EQ(value.array()[0].integerValue(), 1);
    EXPECT_EQ(value.array()[97].string(), kLongText + std::string("98"));
    value.array().push_back(value.array()[97]);
    EXPECT_EQ(value.array()[98], value.array()[97]);
    value.array().clear();
    EXPECT_TRUE(value.array().empty());
}

TEST(Value, DictionariesKeepTheOrderInWhichKeysCame) {
    Value::Dictionary dictionary{{"b", 1}, {"a", 2}, {"b", 3}, {kLongText, 4}};
    EXPECT_THAT(keysOf(dictionary), ElementsAre("b", "a", kLongText));
    EXPECT_EQ(dictionary.find("b")->integerValue(), 3);
    EXPECT_TRUE(dictionary.erase("a"));
    EXPECT_FALSE(dictionary.erase("a"));
    dictionary.set("a", 5);
    EXPECT_THAT(keysOf(dictionary), ElementsAre("b", kLongText, "a"));
    for (auto&& [key, value] : dictionary)
        value = std::string(key);
    EXPECT_EQ(dictionary.find(kLongText)->string(), kLongText);
    const Value::Dictionary reordered{{"a", "a"}, {kLongText, kLongText}, {"b", "b"}};
    EXPECT_EQ(dictionary, reordered);
    const Value::Dictionary other{{"a", "a"}, {kLongText, kLongText}, {"c", "b"}};
    EXPECT_NE(dictionary, other);
}

TEST(Value, LargeDictionariesFindEveryKey) {
    const auto keyOf = [](int i) {
        return std::string(i % 30, 'k') + std::to_string(i);
    };
    Value::Dictionary dictionary;
    for (int i = 0; i < 2000; ++i)
        dictionary.set(keyOf(i), i);
    for (int i = 0; i < 2000; i += 7)
        EXPECT_TRUE(dictionary.erase(keyOf(i)));
    dictionary.set(keyOf(0), "back");
    const Value::Dictionary copy = dictionary;
    for (int i = 1; i < 2000; ++i) {
        const Value* found = copy.find(keyOf(i));
        ASSERT_EQ(found != nullptr, i % 7 != 0) << i;
        if (found) {
            EXPECT_EQ(found->integerValue(), i);
        }
    }
    EXPECT_EQ(keysOf(copy).back(), keyOf(0));
    EXPECT_EQ(copy, dictionary);
}

TEST(Value, ADictionaryTakesAKeyOutOfItself) {
    Value::Dictionary dictionary{{"1", kLongText}, {"2", 2}, {"3", 3}, {"4", 4}};
    dictionary.set(dictionary.find("1")->string(), "grown");
    EXPECT_EQ(dictionary.find(kLongText)->string(), "grown");
}

TEST(Value, BuiltValuesOutliveTheirBuilderAndEachOther) {
    Value list;
    Value text;
    {
        const Value built = builtValue();
        EXPECT_EQ(built, expectedValue());
        list = *built.find("list");
        text = *built.find("text");
    }
    EXPECT_EQ(text.string(), kLongText);
    EXPECT_EQ(list, Value(Value::Array{kLongText, 1, Value::Array{}}));
}

TEST(Value, ChangingABuiltValueLeavesItsCopiesAlone) {
    Value changed = builtValue();
    const Value copy = changed;
    const std::string_view before = std::as_const(changed).find("text")->string();
    changed.dictionary().find("list")->array()[2].array().push_back(7);
    changed.dictionary().find("list")->array().removeAt(0);
    changed.dictionary().erase("text");
    EXPECT_EQ(before, kLongText);
    EXPECT_EQ(copy, expectedValue());
    EXPECT_EQ(changed, Value(Value::Dictionary{{"list", Value::Array{1, Value::Array{7}}}}));
}

TEST(Value, NothingLeaksWhenABuilderIsGivenUp) {
    ValueBuilder builder("text");
    for (int i = 0; i < 200; ++i) {
        builder.openArray();
        builder.pushString({builder.text(), 4});
    }
    builder.close();
    builder.abandon();
    EXPECT_EQ(builder.openContainers(), 198U);
}

TEST(Value, DepthDoesNotExhaustTheStack) {
    const auto deep = [] {
        Value value = kLongText;
        for (int i = 0; i < 250'000; ++i) {
            Value::Dictionary dictionary;
            dictionary.set("k", std::move(value));
            Value::Array array;
            array.push_back(std::move(dictionary));
            value = std::move(array);
        }
        return value;
    };
    const Value value = deep();
    Value copy = value;
    EXPECT_EQ(copy, value);
    EXPECT_EQ(copy, deep());
    copy = Value();
    EXPECT_TRUE(value.isArray());
}
}
}
