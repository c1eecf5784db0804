#include "platform/foundation/NSURL.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

/// Scheme, host, port, escaped path, path, query, fragment and last path component.
std::string partsOf(const NSURL& url) {
    std::string parts;
    for (const std::string& part :
         {url.scheme(), url.host(), url.port() ? std::to_string(*url.port()) : "",
          url.escapedPath(), url.path(), url.query(), url.fragment(), url.lastPathComponent()})
        parts += part + "|";
    return parts;
}

TEST(NSURLTest, AnAddressIsCutIntoItsParts) {
    const std::pair<const char*, const char*> cases[] = {
        {"http://host/a%20b/c.mp4?q=%201#f", "http|host||/a%20b/c.mp4|/a b/c.mp4|q=%201|f|c.mp4|"},
        {"HTTPS://user:pw@Host.Example:8443", "HTTPS|Host.Example|8443||||||"},
        {"http://[::1]:80/?", "http|::1|80|/|/|||/|"},
        {"http://host:/x//", "http|host||/x//|/x//|||x|"},
        {"mailto:a@b.example?subject=x",
         "mailto|||a@b.example|a@b.example|subject=x||a@b.example|"},
        {"gmsg://mobileads/click?u=http://x/?y",
         "gmsg|mobileads||/click|/click|u=http://x/?y||click|"},
        {"/path:with-colon", "|||/path:with-colon|/path:with-colon|||path:with-colon|"},
        {"?only=query", "|||||only=query|||"},
        {"//host/path", "|host||/path|/path|||path|"},
        {"http://h/%2e%2E/%41", "http|h||/%2e%2E/%41|/../A|||A|"},
    };
    for (const auto& [text, parts] : cases) {
        const auto url = NSURL::URLWithString(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->absoluteString(), text);
        EXPECT_EQ(partsOf(*url), parts) << text;
    }
}

TEST(NSURLTest, WhatPageEnginesPassOnIsAcceptedAndOtherTextIsNot) {
    using namespace std::literals;
    for (const char* text :
         {"http://h/a|b?q={x}[1]^`", "http://h/a#b#c", "http://h/a\\b", "http://h/%E2%82%AC",
          "http://xn--bcher-kva.example/", "http://h/(a)*!'$&,;=@:~"})
        EXPECT_TRUE(NSURL::URLWithString(text)) << text;
    for (const auto text : {""sv,
                            "http://h/a b"sv,
                            " http://h/"sv,
                            "http://h/\n"sv,
                            "http://h/\0x"sv,
                            "http://h/ü"sv,
                            "http://h/%zz"sv,
                            "http://h/%4"sv,
                            "http://h/%"sv,
                            "http://"sv,
                            "http:///path"sv,
                            "http:path"sv,
                            "http://h:99999/"sv,
                            "http://h:8a/"sv,
                            "http://[::1/"sv,
                            "http://[::1]x/"sv,
                            "http://a[b]/"sv,
                            "1http://h/"sv,
                            "ht tp://h"sv,
                            "http://h/\"<>"sv,
                            "http://a|b/"sv})
        EXPECT_FALSE(NSURL::URLWithString(std::string(text))) << text;
}

TEST(NSURLTest, AFileAddressHoldsAnyPath) {
    const std::string path = "/var/mobile/50% off?#[1] ü\xff;a.mp4";
    const NSURL url = NSURL::fileURLWithPath(path);
    EXPECT_TRUE(NSURL::URLWithString(url.absoluteString()));
    EXPECT_TRUE(url.isFileURL());
    EXPECT_FALSE(url.isHTTP());
    EXPECT_EQ(url.path(), path);
    EXPECT_EQ(url.query(), "");
    EXPECT_EQ(NSURL::fileURLWithPath("/a b").absoluteString(), "file:///a%20b");
}

}
}
