#include "ads/Utility/GADMacros.h"
#include "ads/json/GAD_ZelJSON.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {
std::string written(const Value& value) {
    return GAD_ZelJSON().stringWithFragment(value).text.value_or("nothing was written");
}

TEST(ZelJSONWriter, WritesEveryKindAndEscapesOnlyWhatMustBe) {
    const std::tuple<Value, const char*> cases[] = {
        {Value(), "null"},
        {true, "true"},
        {false, "false"},
        {-12, "-12"},
        {0.1, "0.1"},
        {Value::number("1.50E+2"), "1.50E+2"},
        {"text", "\"text\""},
        {"\"\\/\b\t\n\f\r\x01\x1f\x7f\u00e9\U0001F600",
         "\"\\\"\\\\/\\b\\t\\n\\f\\r\\u0001\\u001f\x7f\u00e9\U0001F600\""},
        {std::string_view("\0", 1), "\"\\u0000\""},
        {Value::Array{}, "[]"},
        {Value::Dictionary{}, "{}"},
        {Value::Array{1, Value::Array{Value()}, "a"}, "[1,[null],\"a\"]"},
        {Value::Dictionary{{"b", 1}, {"a", Value::Dictionary{{"", true}}}},
         "{\"b\":1,\"a\":{\"\":true}}"},
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
    EXPECT_EQ(GADMacros::readJson("[1]"), std::nullopt);
    EXPECT_EQ(GADMacros::readJson("{"), std::nullopt);
}
}
}
