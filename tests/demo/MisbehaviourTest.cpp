#include "tests/demo/DemoSiteProcess.h"
#include "tests/demo/MediaFiles.h"
#include "tests/demo/WireClient.h"

#include <gio/gio.h>
#include <gmock/gmock.h>

namespace vistrel::demo {
namespace {
std::string unzipped(const std::string& compressed) {
    GConverter* unzip = G_CONVERTER(g_zlib_decompressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP));
    std::string plain(1U << 20U, '\0');
    gsize read = 0;
    gsize made = 0;
    const GConverterResult result =
        g_converter_convert(unzip, compressed.data(), compressed.size(), plain.data(), plain.size(),
                            G_CONVERTER_INPUT_AT_END, &read, &made, nullptr);
    g_object_unref(unzip);
    return result == G_CONVERTER_FINISHED ? plain.substr(0, made) : "";
}

TEST(MisbehaviourTest, AFileIsSentAsBadlyAsAskedFor) {
    const std::string bytes = mediaBytes("short-signal.mp3");
    const size_t size = bytes.size();
    struct Case {
        const char* query;
        std::string announced;
        size_t received;
        Reply::End end;
    };
    const std::vector<Case> cases = {
        {"truncate=1000", std::to_string(size), 1000, Reply::End::Closed},
        {"truncate=0", std::to_string(size), 0, Reply::End::Closed},
        {"nolength", "", size, Reply::End::Closed},
        {"nolength&truncate=1000", "", 1000, Reply::End::Closed},
        {"wronglength=500", std::to_string(size + 500), size, Reply::End::Closed},
        {"wronglength=+500", std::to_string(size + 500), size, Reply::End::Closed},
        {"wronglength=-500", std::to_string(size - 500), size, Reply::End::Closed},
        {"more=5000", std::to_string(size), size + 5000, Reply::End::Closed},
        {"reset=1000", std::to_string(size), 1000, Reply::End::Reset},
        {"reset=0", std::to_string(size), 0, Reply::End::Reset},
        {"stall=1000", std::to_string(size), 1000, Reply::End::Silence},
        {"stall=0", std::to_string(size), 0, Reply::End::Silence},
    };
    for (const Case& one : cases) {
        const Reply reply =
            ask(Query{.address = std::string("/media/short-signal.mp3?") + one.query,
                      .silenceMilliseconds = 300});
        EXPECT_EQ(reply.status, 200) << one.query;
        EXPECT_EQ(reply.header("Content-Type"), "audio/mpeg") << one.query;
        EXPECT_EQ(reply.header("Content-Length"), one.announced) << one.query;
        EXPECT_EQ(reply.body.size(), one.received) << one.query;
        EXPECT_TRUE(reply.body.substr(0, size) == bytes.substr(0, one.received)) << one.query;
        EXPECT_EQ(reply.end, one.end) << one.query;
    }
}

TEST(MisbehaviourTest, ASlowAnswerTakesItsTimeAndArrivesWhole) {
    const Reply reply = ask("/media/short-signal.mp3?slow=128");
    EXPECT_TRUE(reply.body == mediaBytes("short-signal.mp3"));
    EXPECT_GT(reply.seconds, 0.2);
    EXPECT_LT(reply.seconds, 5);
}

TEST(MisbehaviourTest, ADelayedAnswerComesLateOrNever) {
    EXPECT_GE(ask("/music/?delay=1").seconds, 0.99);
    const Reply never = ask(Query{.address = "/music/?delay=99999", .silenceMilliseconds = 200});
    EXPECT_EQ(never.end, Reply::End::Silence);
    EXPECT_EQ(never.head, "");
    EXPECT_EQ(ask("/music/").status, 200);
    const Reply both = ask("/media/short-signal.mp3?delay=1&truncate=100");
    EXPECT_EQ(both.body.size(), 100U);
    EXPECT_GE(both.seconds, 0.99);
}

TEST(MisbehaviourTest, AnyAddressAnswersWithTheStatusAskedFor) {
    EXPECT_EQ(ask("/media/short-signal.mp3?status=404").status, 404);
    EXPECT_EQ(ask("/music/?status=503").status, 503);
}

TEST(MisbehaviourTest, ACompressedAnswerUnpacksToTheFile) {
    const Reply reply = ask("/media/short-signal.mp3?gzip");
    EXPECT_EQ(reply.header("Content-Encoding"), "gzip");
    EXPECT_TRUE(unzipped(reply.body) == mediaBytes("short-signal.mp3"));
}

TEST(MisbehaviourTest, AnAnswerInChunksAnnouncesNoLength) {
    const Reply reply = ask("/media/short-signal.mp3?chunked");
    EXPECT_EQ(reply.header("Transfer-Encoding"), "chunked");
    EXPECT_EQ(reply.header("Content-Length"), "");
    EXPECT_GT(reply.body.size(), mediaBytes("short-signal.mp3").size());
}

TEST(DemoSiteProgram, EndsWhenThePipeOnItsInputIsClosed) {
    DemoSiteProcess site({"--exit-with-parent"});
    EXPECT_TRUE(isListening(site.port()));
    site.closeInput();
    EXPECT_TRUE(site.endsWithin(5));
    EXPECT_EQ(site.exitStatus(), 0);
}

TEST(DemoSiteProgram, EndsWhenItsParentIsKilled) {
    GError* error = nullptr;
    GSubprocess* parent =
        g_subprocess_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                       G_SUBPROCESS_FLAGS_STDIN_PIPE),
                         &error, "sh", "-c", "\"$0\" --exit-with-parent </dev/null & read line",
                         DEMO_SITE_PROGRAM, nullptr);
    ASSERT_NE(parent, nullptr);
    GDataInputStream* output = g_data_input_stream_new(g_subprocess_get_stdout_pipe(parent));
    char* line = g_data_input_stream_read_line(output, nullptr, nullptr, nullptr);
    ASSERT_NE(line, nullptr);
    const int port = std::stoi(std::string(line).substr(std::string(line).rfind(':') + 1));
    g_free(line);
    EXPECT_TRUE(isListening(port));
    g_subprocess_force_exit(parent);
    g_subprocess_wait(parent, nullptr, nullptr);
    // The pipe ends when its last writer, the site, has gone.
    EXPECT_EQ(g_data_input_stream_read_line(output, nullptr, nullptr, nullptr), nullptr);
    EXPECT_FALSE(isListening(port));
    g_object_unref(output);
    g_object_unref(parent);
}

TEST(DemoSiteProgram, RefusesWrongOptionsWithStatusTwo) {
    const std::vector<std::vector<std::string>> wrong = {
        {"--prot", "1"}, {"--port"}, {"--port", "70000"}, {"--port", "x"}, {"--media"}, {"more"}};
    for (const std::vector<std::string>& options : wrong) {
        DemoSiteProcess site(options);
        EXPECT_EQ(site.firstLine(), "") << options.front();
        ASSERT_TRUE(site.endsWithin(5)) << options.front();
        EXPECT_EQ(site.exitStatus(), 2) << options.front();
    }
}
}
}
