#include "demo/AttachmentTable.h"
#include "tests/demo/MediaFiles.h"
#include "tests/demo/WireClient.h"

#include <gio/gio.h>
#include <gmock/gmock.h>
#include <map>

namespace vistrel::demo {
namespace {
std::string sha256(std::string_view bytes) {
    char* digest = g_compute_checksum_for_data(
        G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(bytes.data()), bytes.size());
    std::string text = digest;
    g_free(digest);
    return text + "\n";
}

TEST(MediaTest, EachFileIsServedWholeAndWithItsExactType) {
    const std::map<std::string, std::pair<std::string, std::string>> files = {
        {"harbour-at-dawn.mp4", {"harbour-at-dawn.mp4", "video/mp4"}},
        {"night-tram.m4v", {"night-tram.m4v", "video/m4v"}},
        {"gruesse-aus-koeln.mp3", {"gruesse-aus-koeln.mp3", "audio/mpeg"}},
        {"garden-wall.mov", {"garden-wall.mov", "video/quicktime"}},
        {"capitals.mp4", {"harbour-at-dawn.mp4", "video/MP4"}},
        {"other-spelling.mp3", {"short-signal.mp3", "audio/mp3"}},
    };
    for (const auto& [name, expected] : files) {
        const Reply reply = ask("/media/" + name);
        const std::string bytes = mediaBytes(expected.first);
        EXPECT_EQ(reply.header("Content-Type"), expected.second) << name;
        EXPECT_EQ(reply.header("Content-Length"), std::to_string(bytes.size())) << name;
        EXPECT_TRUE(reply.body == bytes) << name;
        EXPECT_EQ(ask("/sha256?path=/media/" + name).body, sha256(bytes)) << name;
    }
}

TEST(MediaTest, ARangeIsThatPartOfTheFile) {
    const std::string bytes = mediaBytes("short-signal.mp3");
    const std::string size = std::to_string(bytes.size());
    const std::string last = std::to_string(bytes.size() - 1);
    struct Case {
        std::string range;
        int status;
        std::string contentRange;
        std::string body;
    };
    const std::vector<Case> cases = {
        {"bytes=0-0", 206, "bytes 0-0/" + size, bytes.substr(0, 1)},
        {"bytes=10-19", 206, "bytes 10-19/" + size, bytes.substr(10, 10)},
        {"bytes=36000-", 206, "bytes 36000-" + last + "/" + size, bytes.substr(36000)},
        {"bytes=-5", 206, "bytes " + std::to_string(bytes.size() - 5) + "-" + last + "/" + size,
         bytes.substr(bytes.size() - 5)},
        {"bytes=30000-99999999", 206, "bytes 30000-" + last + "/" + size, bytes.substr(30000)},
        {"pages=1-2", 200, "", bytes},
    };
    for (const Case& one : cases) {
        const Reply reply = ask(
            Query{.address = "/media/short-signal.mp3", .headers = "Range: " + one.range + "\r\n"});
        EXPECT_EQ(reply.status, one.status) << one.range;
        EXPECT_EQ(reply.header("Content-Range"), one.contentRange) << one.range;
        EXPECT_TRUE(reply.body == one.body) << one.range;
    }
    const Reply late = ask(
        Query{.address = "/media/short-signal.mp3", .headers = "Range: bytes=" + size + "-\r\n"});
    EXPECT_EQ(late.status, 416);
    EXPECT_EQ(late.header("Content-Range"), "bytes */" + size);
}

TEST(MediaTest, AFileThatIsKnownAlreadyIsNotSentAgain) {
    const Reply first = ask("/media/short-signal.mp3");
    for (const std::string& condition : {"If-None-Match: " + first.header("ETag"),
                                         "If-Modified-Since: " + first.header("Last-Modified")}) {
        const Reply again =
            ask(Query{.address = "/media/short-signal.mp3", .headers = condition + "\r\n"});
        EXPECT_EQ(again.status, 304) << condition;
        EXPECT_EQ(again.body, "") << condition;
    }
    EXPECT_EQ(
        ask(Query{.address = "/media/short-signal.mp3", .headers = "If-None-Match: \"x\"\r\n"})
            .status,
        200);
}

TEST(MediaTest, AnAttachmentsNameArrivesByteForByte) {
    int number = 1;
    for (const Attachment& attachment : attachments()) {
        const Reply reply = ask("/attach/" + std::to_string(number++) + "/segment");
        EXPECT_EQ(reply.status, 200) << attachment.title;
        EXPECT_EQ(reply.header("Content-Disposition"), attachment.disposition) << attachment.title;
        EXPECT_EQ(reply.body.size(), mediaBytes(std::string(attachment.file)).size())
            << attachment.title;
    }
}

TEST(MediaTest, ABigFileHasTheDigestThatIsPromised) {
    const Reply file = ask("/big?mb=80&bytes=7&type=video/mp4&name=big.mp4");
    EXPECT_EQ(file.body.size(), 80U * 1024 * 1024 + 7);
    EXPECT_EQ(file.header("Content-Type"), "video/mp4");
    EXPECT_EQ(file.header("Content-Disposition"), "attachment; filename=\"big.mp4\"");
    EXPECT_EQ(ask("/big.sha256?mb=80&bytes=7").body, sha256(file.body));
}

TEST(MediaTest, NoTwoMebibytesOfABigFileAreEqual) {
    constexpr size_t mebibyte = 1024UL * 1024;
    const std::string file = ask("/big?mb=8").body;
    ASSERT_EQ(file.size(), 8 * mebibyte);
    for (size_t one = 0; one < 8; ++one) {
        for (size_t other = one + 1; other < 8; ++other)
            EXPECT_FALSE(std::string_view(file).substr(one * mebibyte, mebibyte) ==
                         std::string_view(file).substr(other * mebibyte, mebibyte));
    }
    const Reply part =
        ask(Query{.address = "/big?mb=8", .headers = "Range: bytes=1048570-1048585\r\n"});
    EXPECT_EQ(part.status, 206);
    EXPECT_TRUE(part.body == file.substr(1048570, 16));
}
}
}
