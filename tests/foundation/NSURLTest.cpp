#include "platform/foundation/NSURL.h"

#include <gtest/gtest.h>

#include <string>

namespace vistrel {
namespace {

TEST(NSURLTest, PartsAreCutAsTheyStand) {
    struct Case {
        const char* text;
        const char* scheme;
        const char* host;
        std::optional<int> port;
        const char* escapedPath;
        const char* path;
        const char* query;
        const char* fragment;
        const char* last;
    };
    const Case cases[] = {
        {"http://host/a%20b/c.mp4?q=%201#f",
         "http",
         "host",
         {},
         "/a%20b/c.mp4",
         "/a b/c.mp4",
         "q=%201",
         "f",
         "c.mp4"},
        {"HTTPS://user:pw@Host.Example:8443", "HTTPS", "Host.Example", 8443, "", "", "", "", ""},
        {"http://[::1]:80/?", "http", "::1", 80, "/", "/", "", "", "/"},
        {"http://host:/x//", "http", "host", {}, "/x//", "/x//", "", "", "x"},
        {"mailto:a@b.example?subject=x",
         "mailto",
         "",
         {},
         "a@b.example",
         "a@b.example",
         "subject=x",
         "",
         "a@b.example"},
        {"gmsg://mobileads/click?u=http://x/?y",
         "gmsg",
         "mobileads",
         {},
         "/click",
         "/click",
         "u=http://x/?y",
         "",
         "click"},
        {"/relative/path:with-colon",
         "",
         "",
         {},
         "/relative/path:with-colon",
         "/relative/path:with-colon",
         "",
         "",
         "path:with-colon"},
        {"?only=query", "", "", {}, "", "", "only=query", "", ""},
        {"//host/path", "", "host", {}, "/path", "/path", "", "", "path"},
        {"http://h/%2e%2E/%41", "http", "h", {}, "/%2e%2E/%41", "/../A", "", "", "A"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        const auto url = NSURL::URLWithString(each.text);
        ASSERT_TRUE(url);
        EXPECT_EQ(url->absoluteString(), each.text);
        EXPECT_EQ(url->scheme(), each.scheme);
        EXPECT_EQ(url->host(), each.host);
        EXPECT_EQ(url->port(), each.port);
        EXPECT_EQ(url->escapedPath(), each.escapedPath);
        EXPECT_EQ(url->path(), each.path);
        EXPECT_EQ(url->query(), each.query);
        EXPECT_EQ(url->fragment(), each.fragment);
        EXPECT_EQ(url->lastPathComponent(), each.last);
    }
}

TEST(NSURLTest, WhatPageEnginesHandOverIsTakenAndWhatIsNoAddressIsNot) {
    for (const char* text :
         {"http://h/a|b?q={x}[1]^`", "http://h/a#b#c", "http://h/a\\b", "http://h/%E2%82%AC",
          "http://xn--bcher-kva.example/", "http://h/(a)*!'$&,;=@:~"})
        EXPECT_TRUE(NSURL::URLWithString(text)) << text;
    for (const std::string& text : {std::string(),
                                    std::string("http://h/a b"),
                                    std::string(" http://h/"),
                                    std::string("http://h/\n"),
                                    std::string("http://h/\0x", 11),
                                    std::string("http://h/ü"),
                                    std::string("http://h/%zz"),
                                    std::string("http://h/%4"),
                                    std::string("http://h/%"),
                                    std::string("http://"),
                                    std::string("http:///path"),
                                    std::string("http:path"),
                                    std::string("http://h:99999/"),
                                    std::string("http://h:8a/"),
                                    std::string("http://[::1/"),
                                    std::string("http://[::1]x/"),
                                    std::string("http://a[b]/"),
                                    std::string("1http://h/"),
                                    std::string("ht tp://h"),
                                    std::string("http://h/\"<>"),
                                    std::string("http://a|b/")})
        EXPECT_FALSE(NSURL::URLWithString(text)) << text;
}

TEST(NSURLTest, FileAddressesHoldAnyPath) {
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
