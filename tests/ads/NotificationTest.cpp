#include "ads/Notification/GADNotification.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(GADNotification, ReadsBridgeAddresses) {
    const struct {
        std::string_view url;
        std::optional<std::string_view> name; ///< nothing: no notification
        Value::Dictionary parameters;
    } cases[] = {
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
        const auto url = NSURL::URLWithString(text);
        ASSERT_TRUE(url) << text;
        const auto notification = GADNotification::notificationFromURL(*url);
        EXPECT_EQ(notification.has_value(), name.has_value()) << text;
        if (!notification)
            continue;
        EXPECT_EQ(notification->name(), name) << text;
        EXPECT_EQ(notification->parameters(), parameters) << text;
    }
    EXPECT_THAT(
        GADNotification::notificationFromURL(*NSURL::URLWithString("gmsg://h/open?a=browser"))
            ->description(),
        ::testing::MatchesRegex("GADNotification<0x[0-9a-f]+>: name:open "
                                "parameters:\\{\n    a = browser;\n\\}"));
}

}
}
