#include "ads/json/GAD_ZelJSON.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {
/// The whole chain of errors, outermost first: "3 Object value expected for key: a < 11 …".
std::string chain(const GAD_ZelJSON::Reading& reading) {
    if (reading.value)
        return "a value";
    std::string text;
    for (const NSError* error = reading.error.get(); error;
         error = error->underlyingError().get()) {
        if (error->domain() != GAD_ZelJSONErrorDomain)
            return "foreign domain " + error->domain();
        text += (text.empty() ? "" : " < ") + std::to_string(error->code()) + ' ' +
                error->localizedDescription();
    }
    return text;
}

Value read(std::string_view text) {
    GAD_ZelJSON::Reading reading = GAD_ZelJSON().fragmentWithString(text);
    EXPECT_TRUE(reading.value) << text << ": " << chain(reading);
    EXPECT_EQ(reading.error, nullptr);
    return reading.value.value_or("nothing was read");
}

struct Failure {
    const char* errors;
    std::vector<std::string_view> texts;
};

const Failure kFailures[] = {
    {"2 Leading + disallowed in number", {"+1"}},
    {"2 Leading 0 disallowed in number", {"01", "-007", "00e"}},
    {"2 No digits after initial minus", {"-", "-x", "-.5"}},
    {"2 No digits after decimal point",
     {"1.", "1.e5", "123456789012345678901234567890123.", "1234567890123456789012345678901.x"}},
    {"2 No digits after exponent", {"1e", "1.5E+", "1e-x"}},
    {"3 Expected value while parsing array < 2 No digits after initial minus", {"[1,-]"}},
    {"10 Garbage after JSON", {"1 2", "1x", "0.5.5", "nullx", std::string_view("[]\0", 3)}},
    {"11 Unexpected end of string", {"", " \v\f"}},
    {"3 Unrecognised leading character", {"?", std::string_view("\0", 1)}},
    {"3 Expected 'null'", {"nul"}},
    {"3 Expected 'true'", {"tru]"}},
    {"3 Expected 'false'", {"fals"}},
    {"11 End of input while parsing array", {"[", "[1, "}},
    {"9 Trailing comma disallowed in array", {"[1,]", "[1 , \n]"}},
    {"3 Expected value while parsing array < 3 Unrecognised leading character", {"[,1]", "[1}"}},
    {"11 End of input while parsing object", {"{", "{\"a\":1", "{\"a\":1,"}},
    {"9 Trailing comma disallowed in object", {"{\"a\":1,}"}},
    {"3 Object key string expected", {"{1:2}", "{\"a\":1]", "{\"a\":1,,"}},
    {"3 Object key string expected < 8 Illegal escape sequence '0x71'", {"{\"\\q\":1}"}},
    {"3 Expected ':' separating key and value", {"{\"a\" 1}", "{\"a\""}},
    {"3 Object value expected for key: a < 3 Unrecognised leading character", {"{\"a\":}"}},
    {"3 Object value expected for key: k\u00e9 < 11 Unexpected end of string", {"{\"k\\u00e9\":"}},
    {"3 Object value expected for key: a < 3 Expected value while parsing array < 3 Object value "
     "expected for key: b < 2 Leading + disallowed in number",
     {"{\"a\":[{\"b\":+}]}"}},
    {"3 Expected value while parsing array < 9 Trailing comma disallowed in array", {"[[],[1,]]"}},
    {"5 Unescaped control character '0x0'", {"\"abc", "\"", std::string_view("\"a\0b\"", 5)}},
    {"5 Unescaped control character '0x9'", {"\"a\tb\""}},
    {"5 Unescaped control character '0x1f'", {"\"a\\nb\x1f\""}},
    {"5 Unescaped control character '0x1'", {"\"0123456789abcdef0123456789abcde\x01\""}},
    {"11 Unexpected EOF while parsing string", {"\"a\\n"}},
    {"8 Illegal escape sequence '0x0'", {"\"a\\"}},
    {"8 Illegal escape sequence '0x71'", {"\"\\q\""}},
    {"8 Illegal escape sequence '0xc3'", {"\"\\\xc3\xa9\""}},
    {"8 Illegal escape sequence '0x55'", {"\"\\U0041\""}},
    {"6 Broken unicode character < 6 Missing hex quad < 6 Missing hex digit in quad",
     {"\"\\u00g0\"", "\"\\u12"}},
    {"6 Broken unicode character < 6 Invalid high character in surrogate pair", {"\"\\uDC00\""}},
    {"6 Broken unicode character < 6 Missing low character in surrogate pair",
     {"\"\\uD83D\"", "\"\\uD83D\\n\""}},
    {"6 Broken unicode character < 6 Missing low character in surrogate pair < 6 Missing hex digit "
     "in quad",
     {"\"\\uD83D\\u12x4\""}},
    {"6 Broken unicode character < 6 Invalid low surrogate char", {"\"\\uD83D\\uD83D\""}},
};

TEST(ZelJSONReader, FailuresAreReportedWithTheirCauses) {
    for (const auto& [errors, texts] : kFailures) {
        for (const std::string_view text : texts) {
            // In memory that ends with the text, so that sanitizers find reads beyond it.
            const std::vector<char> copy(text.begin(), text.end());
            const std::string_view exact(copy.data(), copy.size());
            EXPECT_EQ(chain(GAD_ZelJSON().fragmentWithString(exact)), errors) << text;
        }
    }
    EXPECT_EQ(chain(GAD_ZelJSON().objectWithString(std::nullopt)), "12 Input was 'nil'");
    EXPECT_EQ(chain(GAD_ZelJSON().fragmentWithString(std::nullopt)), "12 Input was 'nil'");
}

TEST(ZelJSONReader, OnlyFragmentsMayBeScalars) {
    for (const char* text : {"true", " 1 ", "\"[]\"", "null"}) {
        EXPECT_EQ(chain(GAD_ZelJSON().objectWithString(text)), "4 Valid fragment, but not JSON");
        EXPECT_EQ(chain(GAD_ZelJSON().fragmentWithString(text)), "a value");
    }
    EXPECT_EQ(chain(GAD_ZelJSON().objectWithString("true x")), "10 Garbage after JSON");
    EXPECT_EQ(read("true"), Value(true));
    EXPECT_EQ(read("null"), Value());
}

TEST(ZelJSONReader, KeepsTheExactTextOfNumbers) {
    for (const char* text :
         {"0", "-0", "10", "1.50", "-122.42200352825247", "1e400", "6.02E+23", "0e0",
          "1234567890123456789012345678901", "12345678901234567890123456789012",
          "0.1234567890123456789012345678901234567890", "9007199254740993", "1.5e-7"}) {
        const Value number = read(text);
        EXPECT_TRUE(number.isNumber()) << text;
        EXPECT_EQ(number.numberText(), text);
        EXPECT_EQ(read("[" + std::string(text) + "]").array()[0].numberText(), text);
    }
}

TEST(ZelJSONReader, UnescapesStrings) {
    const std::tuple<const char*, std::string_view> cases[] = {
        {R"("")", ""},
        {R"("plain / text of more than one block")", "plain / text of more than one block"},
        {R"("\"\\\/\b\f\n\r\t")", "\"\\/\b\f\n\r\t"},
        {R"("a\u0041\u00e9\u20AC\ud83d\ude00z")", "aA\u00e9\u20ac\U0001F600z"},
        {R"("\u0000")", std::string_view("\0", 1)},
        {R"("\u007f\u0080\u07ff\u0800\uffff\ud800\udc00")",
         "\x7f\u0080\u07ff\u0800\uffff\U00010000"},
        {R"("0123456789\n0123456789abcdef\t0123456789abcdef0123")",
         "0123456789\n0123456789abcdef\t0123456789abcdef0123"},
        {"\"\x7f\u00e9\u20ac\"", "\x7f\u00e9\u20ac"},
    };
    for (const auto& [text, string] : cases)
        EXPECT_EQ(read(text).string(), string) << text;
}

TEST(ZelJSONReader, AcceptsBlanksAnywhereAndMissingCommas) {
    const Value value = read(" \v{ \"a\"\f:\r[ 1\t2 ,3\"x\"[ ]{ } ]\n\"b\" : null \"c\":true,"
                             "\"d\":false } \n");
    const Value expected =
        Value::Dictionary{{"a", Value::Array{1, 2, 3, "x", Value::Array{}, Value::Dictionary{}}},
                          {"b", Value()},
                          {"c", true},
                          {"d", false}};
    EXPECT_EQ(value, expected);
}

TEST(ZelJSONReader, ALaterMemberReplacesAnEarlierOneWithItsKey) {
    const Value value = read(R"({"a":1,"b":2,"\u0061":3})");
    EXPECT_EQ(GAD_ZelJSON().stringWithObject(value).text, R"({"a":3,"b":2})");
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(ZelJSONReader, LimitsTheDepthOfNesting) {
    GAD_ZelJSON json;
    EXPECT_EQ(chain(json.objectWithString(nested(512))), "a value");
    EXPECT_EQ(chain(json.objectWithString(nested(513))), "7 Nested too deep");
    EXPECT_EQ(chain(json.objectWithString("{\"a\":" + nested(512) + "}")), "7 Nested too deep");
    json.setMaxDepth(2);
    EXPECT_EQ(chain(json.objectWithString("[[],[],{},[1]]")), "a value");
    EXPECT_EQ(chain(json.objectWithString("[[],[{}]]")), "7 Nested too deep");
    json.setMaxDepth(0);
    EXPECT_EQ(chain(json.objectWithString(nested(513))), "a value");
}

TEST(ZelJSONReader, HostileNestingDoesNotExhaustTheStack) {
    constexpr std::size_t kDepth = 1'000'000;
    GAD_ZelJSON json;
    json.setMaxDepth(0);
    const GAD_ZelJSON::Reading reading = json.objectWithString(nested(kDepth));
    ASSERT_TRUE(reading.value);
    EXPECT_EQ(json.stringWithObject(*reading.value).text, nested(kDepth));

    const GAD_ZelJSON::Reading broken = json.objectWithString(std::string(kDepth, '[') + "?");
    ASSERT_TRUE(broken.error);
    std::size_t errors = 0;
    for (const NSError* error = broken.error.get(); error; error = error->underlyingError().get())
        ++errors;
    EXPECT_EQ(errors, kDepth + 1);
}
}
}
