#include "platform/foundation/NSURL.h"
#include "platform/foundation/SuggestedFilename.h"
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
        {"http://h/%2e%2E/%09A", "http|h||/%2e%2E/%09A|/../\tA|||\tA|"},
    };
    for (const auto& [text, parts] : cases) {
        const auto url = NSURL::URLWithString(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->absoluteString(), text);
        EXPECT_EQ(partsOf(*url), parts) << text;
    }
}

TEST(NSURLTest, WhatPageEnginesPassOnIsAcceptedAndOtherTextIsNot) {
    for (const char* text :
         {"http://h/a|b?q={x}[1]^`", "http://h/a#b#c", "http://h/a\\b", "http://h/%E2%82%AC",
          "http://xn--bcher-kva.example/", "http://h/(a)*!'$&,;=@:~"})
        EXPECT_TRUE(NSURL::URLWithString(text)) << text;
    const std::pair<const char*, std::vector<const char*>> refused[] = {
        {"characters", {"", "http://h/a b", " http://h/", "http://h/\n", "http://h/\"<>"}},
        {"escapes", {"http://h/%zz", "http://h/%4", "http://h/%", "http://h/ü"}},
        {"no host", {"http://", "http:///path", "http:path"}},
        {"host", {"http://[::1/", "http://[::1]x/", "http://a[b]/", "http://a|b/"}},
        {"port or scheme", {"http://h:99999/", "http://h:8a/", "1http://h/", "ht tp://h"}},
    };
    for (const auto& [reason, texts] : refused)
        for (const char* text : texts)
            EXPECT_FALSE(NSURL::URLWithString(text)) << reason << ": " << text;
    EXPECT_FALSE(NSURL::URLWithString(std::string("http://h/\0x", 11)));
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

std::string times(const std::string& text, int count) {
    return count == 0 ? "" : text + times(text, count - 1);
}

TEST(SuggestedFilenameTest, ANameComesFromTheHeaderThenTheAddressThenTheHost) {
    struct Case {
        std::string header;
        const char* url;
        std::string name;
        const char* type = "video/mp4";
    };
    const char* const film = "http://host/films/film.mp4?x=/y.mp3#z";
    const Case cases[] = {
        // The header's plain form.
        {"attachment; filename=plain.mp4", film, "plain.mp4"},
        {R"(attachment; filename="Quoted Name.mp4")", film, "Quoted Name.mp4"},
        {R"(attachment; filename="one; two=three.mp4")", film, "one; two=three.mp4"},
        {R"(attachment; filename="A \"quoted; name.mp4")", film, R"(A "quoted; name.mp4)"},
        {R"(ATTACHMENT ;  FILENAME = "spaced.mp4" ; size=3)", film, "spaced.mp4"},
        {R"(filename="without a kind.mp4")", film, "without a kind.mp4"},
        {R"(attachment; filename="never closed.mp4)", film, "never closed.mp4"},
        {R"(attachment; filename="a%20b.mp4")", film, "a%20b.mp4"},
        {"attachment; filename=\"\xdc"
         "ber.mp4\"",
         film, "Über.mp4"},
        {"attachment; filename=\"Über.mp4\"", film, "Über.mp4"},
        {R"(attachment; filename="first.mp4"; filename="second.mp4")", film, "first.mp4"},
        {R"(attachment; xfilename="no.mp4"; name="no.mp4")", film, "film.mp4"},
        // A well-formed extended form comes first wherever it stands.
        {"attachment; filename*=UTF-8''Gr%C3%BC%C3%9Fe.mp4", film, "Grüße.mp4"},
        {"attachment; filename*=utf-8'de'%e2%82%ac.mp4; filename=x.mp4", film, "€.mp4"},
        {"attachment; filename=x.mp4; filename*=ISO-8859-1'de'Gr%FC%DFe.mp4", film, "Grüße.mp4"},
        {"attachment; filename=good.mp4; filename*=UTF-8''b%zz.mp4", film, "good.mp4"},
        {"attachment; filename=good.mp4; filename*=UTF-8''b%FF.mp4", film, "good.mp4"},
        {"attachment; filename=good.mp4; filename*=KOI8-R''b.mp4", film, "good.mp4"},
        {"attachment; filename*=broken", film, "film.mp4"},
        // The address.
        {"", film, "film.mp4"},
        {"inline", "http://host/a%20b%2Fc.mp4", "c.mp4"},
        {"", "http://host/%E2%82%AC.mp3", "€.mp3", "audio/mpeg"},
        {"", "http://host/Gr%FC%DFe.mp3", "Grüße.mp3", "audio/mpeg"},
        {"", "http://host/..%2F", "host.mp3", "audio/mpeg"},
        {"", "http://host.example/", "host.example.mp4"},
        {"", "http://host.example?q", "host.example.html", "text/html"},
        {R"(attachment; filename="..")", film, "film.mp4"},
        {R"(attachment; filename="/")", film, "film.mp4"},
        {"", "no address at all", "Unknown", ""},
        // Names that try to leave the folder.
        {R"(attachment; filename="../../etc/passwd")", film, "passwd.mp4"},
        {R"(attachment; filename="..\\..\\boot.mp4")", film, "boot.mp4"},
        {"attachment; filename*=UTF-8''..%2F..%2Fa.mp4", film, "a.mp4"},
        {R"(attachment; filename="/var/mobile/abs.mp4")", film, "abs.mp4"},
        // Extensions.
        {"", "http://host/get.php?id=3", "get.php.mp4"},
        {"", "http://host/song", "song.mp3", "audio/mpeg"},
        {"", "http://host/FILM.MP4", "FILM.MP4"},
        {"", "http://host/Clip.Mp4", "Clip.Mp4.mp4"},
        {"", "http://host/Clip.mpg4", "Clip.mpg4.mp4"},
        {"", "http://host/Clip.M4v", "Clip.M4v.m4v", "video/m4v"},
        {"", "http://host/Song.Mp3", "Song.Mp3.mp3", "audio/mpeg"},
        {"", "http://host/Song.MP3", "Song.MP3", "audio/mpeg"},
        {"", "http://host/film.m4v", "film.m4v"},
        {"", "http://host/film", "film.m4v", "VIDEO/M4V"},
        {"", "http://host/film.mp4.", "film.mp4"},
        {"", "http://host/thing.xyz", "thing.xyz", "application/x-unheard-of"},
        {"", "http://host/thing", "thing", ""},
        {R"(attachment; filename="song.mp3.html")", film, "song.mp3.html.mp3", "audio/mpeg"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(suggestedFilename(each.header, each.url, each.type), each.name)
            << each.header << " | " << each.url << " | " << each.type;
}

TEST(SuggestedFilenameTest, AnyTextBecomesAPlainName) {
    for (const char* text : {"", ".", "..", "...", " . . ", "//", "\x01\x02"})
        EXPECT_EQ(plainFilename(text), "Unknown") << text;
    const std::pair<std::string, std::string> cases[] = {
        {"plain.mp4", "plain.mp4"},
        {".hidden.mp4", "hidden.mp4"},
        {"...many.mp4", "many.mp4"},
        {"a/b\\c.mp4", "c.mp4"},
        {"folder/", "folder"},
        {"con\x01tr\x1b[31mol\x7f.mp4", "contr[31mol.mp4"},
        {std::string("zero\0byte", 9), "zerobyte"},
        {"line\r\nbreak", "linebreak"},
        {"c1\u0085control", "c1control"},
        {"\u202asong\u202e4pm.exe", "song4pm.exe"},
        {"\u2066a\u2069\u200fb\u061c.mp3", "ab.mp3"},
        {"\ufeffbom.mp3", "bom.mp3"},
        {"\xe2\x80\xae..mp3", "mp3"},
        {"bad\xff\xfe.mp4", "bad\xef\xbf\xbd\xef\xbf\xbd.mp4"},
        {"\u07ff\u0800\U00010000", "\u07ff\u0800\U00010000"},
        {"over\xe0\x9f\xbflong", "over\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbdlong"},
        {"over\xc0\xaflong", "over\xef\xbf\xbd\xef\xbf\xbdlong"},
        {"half\xed\xa0\x80surrogate", "half\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbdsurrogate"},
        {"  blanks .mp4  ", "blanks .mp4"},
        {"\xc2\xa0wide\xe3\x80\x80", "wide"},
        {"AC:DC*?<>|\".mp3", "AC:DC*?<>|\".mp3"},
        {"👩‍👧.mp4", "👩‍👧.mp4"},
        {times("0123456789", 30) + ".mp4", times("0123456789", 25) + "0.mp4"},
        {times("ö", 150) + ".mp4", times("ö", 125) + ".mp4"},
        {"name." + times("x", 300), "name." + times("x", 250)},
        {times("a", 254) + ".mp4 ", times("a", 251) + ".mp4"},
        {times("a", 254) + " b" + times("c", 20), times("a", 254)},
        {times("a", 255), times("a", 255)},
    };
    for (const auto& [text, name] : cases) {
        EXPECT_EQ(plainFilename(text), name) << text;
        EXPECT_EQ(plainFilename(name), name) << "a plain name stays as it is";
    }
}

}
}
