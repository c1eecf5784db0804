#include "ads/Network/GADNetworkUtilities.h"

#include "ads/Notification/GADNotification.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADTextualDescription.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

using Utilities = GADNetworkUtilities;

NSURL address(std::string_view text) {
    return *NSURL::URLWithString(text);
}

std::string appended(const Value::Dictionary& parameters, std::string_view to) {
    const auto url = Utilities::appendQueryParametersToURL(parameters, address(to));
    return url ? url->absoluteString() : "none";
}

TEST(GADNetworkUtilities, EscapesAllButLettersDigitsAndUnreservedSigns) {
    EXPECT_EQ(Utilities::encodeURL("azAZ09-._~"), "azAZ09-._~");
    EXPECT_EQ(Utilities::encodeURL("!*'();:@&=+$,/?%#[]"),
              "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D");
    EXPECT_EQ(Utilities::encodeURL(" \"<>\\^`{|}"), "%20%22%3C%3E%5C%5E%60%7B%7C%7D");
    EXPECT_EQ(Utilities::encodeURL("é€\x7F"), "%C3%A9%E2%82%AC%7F");
    EXPECT_EQ(Utilities::encodeURL(std::string_view("\0\n", 2)), "%00%0A");
    EXPECT_EQ(Utilities::encodeURL(""), "");
}

TEST(GADNetworkUtilities, AppendsEntriesInTheirOrder) {
    EXPECT_EQ(appended({{"b", "1"}, {"a", "2"}}, "http://h/p"), "http://h/p?b=1&a=2");
    EXPECT_EQ(appended({{"b", "x y"}}, "http://h/p?q=1"), "http://h/p?q=1&b=x%20y");
    EXPECT_EQ(appended({{"k", ""}, {"l", "v"}}, "http://h/"), "http://h/?k&l=v");
    EXPECT_EQ(appended({{"n", 7}, {"t", true}}, "http://h/"), "http://h/?n=7&t=1");
    EXPECT_EQ(appended({{"k", "v"}}, "http://h/?"), "http://h/??k=v");
    EXPECT_EQ(appended({}, "http://h/?"), "http://h/?");
    EXPECT_EQ(appended({{"not a key", "v"}}, "http://h/"), "none");
    const auto bare = Utilities::appendQueryKeyValueToURL("k", std::nullopt, address("http://h/"));
    EXPECT_EQ(bare->absoluteString(), "http://h/?k");
}

TEST(GADNetworkUtilities, FindsTheFirstValueOfExactlyThisKey) {
    const std::tuple<std::string_view, std::optional<std::string>> cases[] = {
        {"ai=5", "5"},          {"AI=5", std::nullopt},
        {"x=1&ai=2&ai=3", "2"}, {"ai&ai=3", "3"},
        {"ai", std::nullopt},   {"ai=", ""},
        {"ai=a=b", "a"},        {"xai=1&aix=2", std::nullopt},
        {"ai=%41+b", "%41+b"},  {"a;ai=2", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [query, value] : cases) {
        const NSURL url = address("http://h/?" + std::string(query) + "#ai=fragment");
        EXPECT_EQ(Utilities::parameterValueForKeyFromURL("ai", url), value) << query;
    }
}

TEST(GADNetworkUtilities, ReadsAQueryIntoEntries) {
    const std::tuple<std::string_view, Value::Dictionary> cases[] = {
        {"A=1;b=2&&c", {{"a", "1"}, {"b", "2"}}},
        {"", {}},
        {"&;&", {}},
        {"a=1&a=2&b=3&A=4", {{"a", "4"}, {"b", "3"}}},
        {"a=b=c&d=e", {{"d", "e"}}},
        {"a=&=b", {{"a", ""}, {"", "b"}}},
        {"u=http%3A%2F%2Fh%2F%3Fx%3D1%26y", {{"u", "http://h/?x=1&y"}}},
        {"Caf%C3%A9=cr%c3%a8me", {{"café", "crème"}}},
        {"%41%5A=x", {{"az", "x"}}},
        {"ÉCOLE=É&ŻÓŁĆ=x&ΑΒΓ=y&ДОМ=z", {{"école", "É"}, {"żółć", "x"}, {"αβγ", "y"}, {"дом", "z"}}},
        {"a=x+y", {{"a", "x+y"}}},
        {"a=%&b=%4&c=%4G&d=%GG&e=1", {{"e", "1"}}},
        {"a=%FF&b=%C3&c=%ED%A0%80&d=1", {{"d", "1"}}},
        {"%FF=a&b=1", {{"b", "1"}}},
        {"\xFF=a&b=\xC3\xA9", {{"b", "é"}}},
        {"long-key-of-more-than-sixteen-bytes=a%20value%20that%20is%20as%20long",
         {{"long-key-of-more-than-sixteen-bytes", "a value that is as long"}}},
    };
    for (const auto& [query, entries] : cases)
        EXPECT_EQ(Utilities::dictionaryFromQueryString(query), entries) << query;
    EXPECT_TRUE(Utilities::dictionaryFromQueryString(std::nullopt).empty());
}

TEST(GADNetworkUtilities, AnEmptyUserAgentChangesNothing) {
    Utilities::setUserAgentString("Browser/1");
    Utilities::setUserAgentString("");
    EXPECT_EQ(Utilities::userAgentString(), "Browser/1");
}

TEST(GADNotification, ReadsBridgeAddresses) {
    using Name = std::optional<std::string_view>; // nothing: no notification
    const std::tuple<std::string_view, Name, Value::Dictionary> cases[] = {
        {"gmsg://mobileads/loadAdURL?url=http%3A%2F%2Fh%2F&type=grokruf",
         "loadAdURL",
         {{"url", "http://h/"}, {"type", "grokruf"}}},
        {"gmsg:/close", "close", {}},
        {"gmsg://h/a/b?X=1", "a/b", {{"x", "1"}}},
        {"gmsg:name?a=b", "name", {{"a", "b"}}},
        {"gmsg://h/%FF?a=b", "", {{"a", "b"}}},
        {"grokruf://launch?url=http%3A%2F%2Fh%2F", "open", {{"a", "browser"}, {"u", "http://h/"}}},
        {"grokruf://launch", "open", {{"a", "browser"}}},
        {"grokruf://closecanvas?x=1", "close", {}},
        {"grokruf://log?string=hello%20there", "log", {{"string", "hello there"}}},
        {"grokruf://other?x=1", std::nullopt, {}},
        {"GMSG://h/close", std::nullopt, {}},
        {"http://h/close", std::nullopt, {}},
    };
    for (const auto& [text, name, parameters] : cases) {
        const auto notification = GADNotification::notificationFromURL(address(text));
        ASSERT_EQ(notification.has_value(), name.has_value()) << text;
        if (notification) {
            EXPECT_EQ(notification->name(), name) << text;
            EXPECT_EQ(notification->parameters(), parameters) << text;
        }
    }
    EXPECT_THAT(
        GADNotification::notificationFromURL(address("gmsg://h/open?a=browser"))->description(),
        ::testing::MatchesRegex("GADNotification<0x[0-9a-f]+>: name:open "
                                "parameters:\\{\n    a = browser;\n\\}"));
}

TEST(GADNumberUtilities, WritesOnlyTheDecimalsThatAreNeeded) {
    const std::pair<float, std::string_view> cases[] = {
        {0.0F, "0"},     {320.0F, "320"},
        {0.5F, "0.5"},   {1.5F, "1.5"},
        {2.25F, "2.25"}, {1000000.F, "1000000"},
        {-20.0F, "-20"}, {0.1F, "0.1"},
        {1e-7F, "0"},    {std::numeric_limits<float>::infinity(), "inf"},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(GADNumberUtilities::stringWithFloat(number), text);
}

TEST(GADNumberUtilities, ReadsTheWholeNumberAtTheStartOfAText) {
    const std::pair<std::string_view, int> cases[] = {
        {"", 0},
        {"  ", 0},
        {"12", 12},
        {" 7b", 7},
        {"-3.9", -3},
        {"+4", 4},
        {"b1", 0},
        {"-", 0},
        {"99999999999999999999", 2147483647},
        {"2147483648", 2147483647},
        {"-2147483649", -2147483647 - 1},
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(GADNumberUtilities::integerWithString(text), number) << text;
}

TEST(GADNumberUtilities, ConversionsAreClamped) {
    using GADNumberUtilities::saturated;
    EXPECT_EQ(saturated<std::int32_t>(2147483648.0), 2147483647);
    EXPECT_EQ(saturated<std::int32_t>(-1e300), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(saturated<std::int32_t>(-2.9), -2);
    EXPECT_EQ(saturated<std::uint32_t>(-0.5), 0U);
    EXPECT_EQ(saturated<std::uint32_t>(1e20), 4294967295U);
    EXPECT_EQ(saturated<std::int64_t>(9.3e18), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(saturated<std::int32_t>(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(GADTextualDescription, PrintsValuesAsTheDeviceLogDoes) {
    const Value value(Value::Dictionary{
        {"plain", "word"},
        {"two words", "a \"quoted\" text"},
        {"list", Value::Array{1, Value(true), Value::Array{}, Value()}},
        {"moment", Value::date(1'300'000'000)},
    });
    EXPECT_EQ(
        gadTextualDescription(value),
        "{\n    plain = word;\n    \"two words\" = \"a \\\"quoted\\\" text\";\n"
        "    list = (\n        1,\n        1,\n        (\n        ),\n        <null>\n    );\n"
        "    moment = \"2011-03-13 07:06:40 +0000\";\n}");
    EXPECT_EQ(gadTextualDescription(Value("a b")), "a b");
    EXPECT_EQ(gadTextualDescription(Value(1.5)), "1.5");
}

TEST(GADTextualDescription, ExcessiveNestingIsCut) {
    Value value;
    for (int depth = 0; depth < 20'000; ++depth) {
        Value::Array outer;
        outer.push_back(std::move(value));
        value = Value(std::move(outer));
    }
    EXPECT_THAT(gadTextualDescription(value), HasSubstr("..."));
}

}
}
