#include "platform/foundation/SuggestedFilename.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vistrel {
namespace {

std::string times(const std::string& text, int count) {
    std::string result;
    while (count-- > 0)
        result += text;
    return result;
}

TEST(SuggestedFilenameTest, NamesComeFromTheHeaderThenTheAddressThenTheHost) {
    struct Case {
        std::string header;
        const char* url;
        const char* type;
        std::string name;
    };
    const char* const film = "http://host/films/film.mp4?x=/y.mp3#z";
    const Case cases[] = {
        // The header's plain form.
        {"attachment; filename=plain.mp4", film, "video/mp4", "plain.mp4"},
        {R"(attachment; filename="Quoted Name.mp4")", film, "video/mp4", "Quoted Name.mp4"},
        {R"(attachment; filename="one; two=three.mp4")", film, "video/mp4", "one; two=three.mp4"},
        {R"(attachment; filename="A \"quoted\" name.mp4")", film, "video/mp4",
         R"(A "quoted" name.mp4)"},
        {R"(ATTACHMENT ;  FILENAME = "spaced.mp4" ; size=3)", film, "video/mp4", "spaced.mp4"},
        {R"(filename="without a kind.mp4")", film, "video/mp4", "without a kind.mp4"},
        {R"(attachment; filename="never closed.mp4)", film, "video/mp4", "never closed.mp4"},
        {R"(attachment; filename="a%20b.mp4")", film, "video/mp4", "a%20b.mp4"},
        {"attachment; filename=\"\xdc"
         "ber.mp4\"",
         film, "video/mp4", "Über.mp4"},
        {"attachment; filename=\"Über.mp4\"", film, "video/mp4", "Über.mp4"},
        {R"(attachment; filename="first.mp4"; filename="second.mp4")", film, "video/mp4",
         "first.mp4"},
        {R"(attachment; xfilename="no.mp4"; name="no.mp4")", film, "video/mp4", "film.mp4"},
        // The extended form goes first wherever it stands, when it is well-formed.
        {"attachment; filename*=UTF-8''Gr%C3%BC%C3%9Fe.mp4", film, "video/mp4", "Grüße.mp4"},
        {"attachment; filename*=utf-8'de'%e2%82%ac.mp4; filename=x.mp4", film, "video/mp4",
         "€.mp4"},
        {"attachment; filename=x.mp4; filename*=ISO-8859-1'de'Gr%FC%DFe.mp4", film, "video/mp4",
         "Grüße.mp4"},
        {"attachment; filename=good.mp4; filename*=UTF-8''b%zz.mp4", film, "video/mp4", "good.mp4"},
        {"attachment; filename=good.mp4; filename*=UTF-8''b%FF.mp4", film, "video/mp4", "good.mp4"},
        {"attachment; filename=good.mp4; filename*=KOI8-R''b.mp4", film, "video/mp4", "good.mp4"},
        {"attachment; filename*=broken", film, "video/mp4", "film.mp4"},
        // The address.
        {"", film, "video/mp4", "film.mp4"},
        {"inline", "http://host/a%20b%2Fc.mp4", "video/mp4", "c.mp4"},
        {"", "http://host/%E2%82%AC.mp3", "audio/mpeg", "€.mp3"},
        {"", "http://host/Gr%FC%DFe.mp3", "audio/mpeg", "Grüße.mp3"},
        {"", "http://host/..%2F", "audio/mpeg", "host.mp3"},
        {"", "http://host.example/", "video/mp4", "host.example.mp4"},
        {"", "http://host.example?q", "text/html", "host.example.html"},
        {R"(attachment; filename="..")", film, "video/mp4", "film.mp4"},
        {R"(attachment; filename="/")", film, "video/mp4", "film.mp4"},
        {"", "no address at all", "", "Unknown"},
        // Names that try to leave the folder.
        {R"(attachment; filename="../../etc/passwd")", film, "video/mp4", "passwd.mp4"},
        {R"(attachment; filename="..\\..\\boot.mp4")", film, "video/mp4", "boot.mp4"},
        {"attachment; filename*=UTF-8''..%2F..%2Fa.mp4", film, "video/mp4", "a.mp4"},
        {R"(attachment; filename="/var/mobile/abs.mp4")", film, "video/mp4", "abs.mp4"},
        // Extensions.
        {"", "http://host/get.php?id=3", "video/mp4", "get.php.mp4"},
        {"", "http://host/song", "audio/mpeg", "song.mp3"},
        {"", "http://host/FILM.MP4", "video/mp4", "FILM.MP4"},
        {"", "http://host/Clip.Mp4", "video/mp4", "Clip.Mp4.mp4"},
        {"", "http://host/Clip.mpg4", "video/mp4", "Clip.mpg4.mp4"},
        {"", "http://host/Clip.M4v", "video/m4v", "Clip.M4v.m4v"},
        {"", "http://host/Song.Mp3", "audio/mpeg", "Song.Mp3.mp3"},
        {"", "http://host/Song.MP3", "audio/mpeg", "Song.MP3"},
        {"", "http://host/film.m4v", "video/mp4", "film.m4v"},
        {"", "http://host/film", "VIDEO/M4V", "film.m4v"},
        {"", "http://host/film.mp4.", "video/mp4", "film.mp4"},
        {"", "http://host/thing.xyz", "application/x-unheard-of", "thing.xyz"},
        {"", "http://host/thing", "", "thing"},
        {R"(attachment; filename="song.mp3.html")", film, "audio/mpeg", "song.mp3.html.mp3"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(suggestedFilename(each.header, each.url, each.type), each.name)
            << each.header << " | " << each.url << " | " << each.type;
}

TEST(SuggestedFilenameTest, AnyTextBecomesAPlainNameAndCleaningTwiceChangesNothing) {
    struct Case {
        std::string text;
        std::string name;
    };
    const Case cases[] = {
        {"plain.mp4", "plain.mp4"},
        {"", "Unknown"},
        {".", "Unknown"},
        {"..", "Unknown"},
        {"...", "Unknown"},
        {" . . ", "Unknown"},
        {"\x01\x02", "Unknown"},
        {".hidden.mp4", "hidden.mp4"},
        {"...many.mp4", "many.mp4"},
        {"a/b\\c.mp4", "c.mp4"},
        {"folder/", "folder"},
        {"//", "Unknown"},
        {"con\x01tr\x1b[31mol\x7f.mp4", "contr[31mol.mp4"},
        {std::string("zero\0byte", 9), "zerobyte"},
        {"line\r\nbreak", "linebreak"},
        {"c1\xc2\x85"
         "control",
         "c1control"},
        {"song\xe2\x80\xae"
         "4pm.exe",
         "song4pm.exe"},
        {"\xe2\x81\xa6"
         "a\xe2\x81\xa9\xe2\x80\x8f"
         "b\xd8\x9c.mp3",
         "ab.mp3"},
        {"\xef\xbb\xbf"
         "bom.mp3",
         "bom.mp3"},
        {"\xe2\x80\xae..mp3", "mp3"},
        {"bad\xff\xfe.mp4", "bad\xef\xbf\xbd\xef\xbf\xbd.mp4"},
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
    for (const Case& each : cases) {
        const std::string name = plainFilename(each.text);
        EXPECT_EQ(name, each.name) << each.text;
        EXPECT_EQ(plainFilename(name), name) << each.text;
        EXPECT_LE(name.size(), 255U);
    }
}

}
}
