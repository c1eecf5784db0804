#include "platform/linux/network/CurlNetwork.h"

#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/network/CookieJar.h"
#include "tests/linux/TestCertificate.h"
#include "tests/linux/network/LoopbackServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <zlib.h>

#include <cstdio>

namespace vistrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Pair;

class TransferRecorder : public host::TransferClient {
public:
    bool transferWillRedirect(const host::TransferResponse& redirect,
                              const std::string& url) override {
        redirects.push_back(std::to_string(redirect.status) + " " + url);
        return true;
    }
    void transferDidReceiveResponse(const host::TransferResponse& answer) override {
        response = answer;
        if (onResponse)
            onResponse();
    }
    void transferDidReceiveData(std::span<const std::byte> bytes) override {
        for (const std::byte byte : bytes)
            body += static_cast<char>(byte);
        largestChunk = std::max(largestChunk, bytes.size());
        if (onData)
            onData();
    }
    void transferDidFinish() override { finished = true; }
    void transferDidFail(const host::TransferError& failure) override { error = failure; }
    bool isOver() const { return finished || error; }

    std::vector<std::string> redirects;
    std::optional<host::TransferResponse> response;
    std::string body;
    std::size_t largestChunk = 0;
    bool finished = false;
    std::optional<host::TransferError> error;
    std::function<void()> onResponse;
    std::function<void()> onData;
};

std::string ok(const std::string& headers, const std::string& body) {
    return "HTTP/1.1 200 OK\r\n" + headers + "\r\n" + body;
}

std::string sized(const std::string& headers, const std::string& body) {
    return ok(headers + "Content-Length: " + std::to_string(body.size()) + "\r\n", body);
}

std::string redirectTo(const std::string& target, const std::string& headers = {}) {
    return "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\n" + headers +
           "Content-Length: 5\r\n\r\nmoved";
}

std::string packed(const std::string& text, int format) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, format, 8, Z_DEFAULT_STRATEGY);
    std::string bytes(compressBound(text.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    deflate(&stream, Z_FINISH);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}

std::string gzipped(const std::string& text) {
    return packed(text, MAX_WBITS + 16);
}

class CurlNetworkTest : public ::testing::Test {
protected:
    /// Turns the loop until the condition holds, at most some seconds.
    bool runUntil(const std::function<bool()>& condition, double atMost = 20) {
        const double deadline = loop_.now() + atMost;
        // Wakes the loop to look at the deadline, and at what the server's threads have done.
        const guint tick = g_timeout_add(
            2, [](gpointer) { return gboolean{G_SOURCE_CONTINUE}; }, nullptr);
        while (!condition() && loop_.now() < deadline)
            g_main_context_iteration(nullptr, TRUE);
        g_source_remove(tick);
        return condition();
    }
    host::TransferRequest get(const std::string& path) const {
        host::TransferRequest request;
        request.url = server_.url(path);
        request.timeout = 10;
        return request;
    }
    void fetch(host::TransferRequest request) {
        recorder_ = {};
        transfer_ = network_.start(std::move(request), recorder_);
        ASSERT_FALSE(recorder_.isOver()) << "nothing may be reported from inside start";
        ASSERT_TRUE(runUntil([&] { return recorder_.isOver(); }));
        transfer_.reset();
    }

    GLibEventLoop loop_;
    LoopbackServer server_;
    CurlNetwork network_{loop_};
    TransferRecorder recorder_;
    std::unique_ptr<host::Transfer> transfer_;
};

TEST_F(CurlNetworkTest, DeliversHeadAndBodyAsTheServerSentThem) {
    const std::string body(3'000'000, 'v');
    server_.at("/film", sized("Content-Type: Video/MP4 ; codecs=x\r\nX-One: 1\r\n", body));
    fetch(get("/film"));
    ASSERT_TRUE(recorder_.finished) << recorder_.error->message;
    EXPECT_EQ(recorder_.response->status, 200);
    EXPECT_EQ(recorder_.response->mimeType, "Video/MP4") << "the case is the server's";
    EXPECT_EQ(recorder_.response->expectedLength, 3'000'000);
    EXPECT_EQ(recorder_.response->url, server_.url("/film"));
    EXPECT_EQ(recorder_.body, body);
    EXPECT_LE(recorder_.largestChunk, 256U * 1024);
}

TEST_F(CurlNetworkTest, AnswersOfUnknownLengthHaveNone) {
    const std::string text(3'000'000, 'a');
    const std::string gzip = "Content-Encoding: gzip\r\n";
    const std::string deflate = "Content-Encoding: Deflate\r\n";
    struct Case {
        const char* name;
        std::string bytes;
        std::string body;
    };
    const Case cases[] = {
        {"gzip", sized(gzip, gzipped(text)), text},
        {"gzip in two members", sized(gzip, gzipped(text) + gzipped("more")), text + "more"},
        {"gzip with padding", sized(gzip, gzipped(text) + std::string(9, '\0')), text},
        {"deflate", sized(deflate, packed(text, MAX_WBITS)), text},
        {"deflate without header", sized(deflate, packed(text, -MAX_WBITS)), text},
        {"chunked", ok("Transfer-Encoding: chunked\r\n", "3\r\nabc\r\n0\r\n\r\n"), "abc"},
        {"until the end", ok("", "until the end"), "until the end"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        server_.at("/last", each.bytes);
        fetch(get("/last"));
        EXPECT_TRUE(recorder_.finished) << recorder_.error->message;
        EXPECT_EQ(recorder_.response->expectedLength, -1);
        EXPECT_TRUE(recorder_.body == each.body);
    }
}

TEST_F(CurlNetworkTest, ABodyThatIsNotWholeNeverCompletes) {
    using Kind = host::TransferErrorKind;
    const std::string whole = gzipped(std::string(9'000, 'q') + "end");
    std::string damaged = whole;
    damaged[whole.size() - 6] ^= 1; // in the checksum
    const std::string chunked = "Transfer-Encoding: chunked\r\n";
    const std::string gzip = "Content-Encoding: gzip\r\n";
    struct Case {
        const char* name;
        std::string bytes;
        Kind kind = Kind::ConnectionLost;
    };
    const Case cases[] = {
        {"shorter than announced", ok("Content-Length: 100\r\n", "only this")},
        {"cut inside a chunk", ok(chunked, "a0\r\nonly this")},
        {"cut between chunks", ok(chunked, "3\r\nabc\r\n")},
        {"cut after the head", ok(chunked, "")},
        {"size that is not a number", ok(chunked, "3\r\nabc\r\nzz\r\nabc\r\n")},
        {"negative size", ok(chunked, "3\r\nabc\r\n-5\r\nabc\r\n")},
        {"size too large", ok(chunked, "fffffffffffffffff\r\nabc")},
        {"cut in the head", "HTTP/1.1 200 OK\r\nContent-Le"},
        {"nothing", ""},
        {"cut gzip of a known length", ok(gzip + "Content-Length: 500\r\n", whole.substr(0, 20))},
        {"cut gzip", ok(gzip, whole.substr(0, 20))},
        {"gzip without its trailer", ok(gzip, whole.substr(0, whole.size() - 8))},
        {"gzip cut after the head", ok(gzip, "")},
        {"cut gzip in whole chunks",
         ok(gzip + chunked, "5\r\n" + whole.substr(0, 5) + "\r\n0\r\n\r\n")},
        {"gzip with a wrong checksum", ok(gzip, damaged), Kind::Other},
        {"not gzip at all", ok(gzip, "plain text"), Kind::Other},
        {"cut deflate", ok("Content-Encoding: deflate\r\n",
                           packed(std::string(9'000, 'q'), MAX_WBITS).substr(0, 15))},
        {"not HTTP", "220 mail.example ESMTP\r\n", Kind::Other},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        server_.at("/last", each.bytes);
        fetch(get("/last"));
        EXPECT_FALSE(recorder_.finished);
        ASSERT_TRUE(recorder_.error);
        EXPECT_EQ(recorder_.error->kind, each.kind) << recorder_.error->message;
    }
}

TEST_F(CurlNetworkTest, NoServerHoldsTheLoop) {
    const auto endless = [](std::string first, std::string more) {
        for (int count = 0; count < 1000; ++count)
            more += more.size() < 60'000 ? more : std::string();
        return [first, more](const LoopbackConnection& connection) {
            (void)connection.send(first);
            while (connection.send(more)) {
            }
        };
    };
    server_.at("/last-interim", endless("", "HTTP/1.1 100 Continue\r\n\r\n"));
    server_.at("/last-fields", endless("HTTP/1.1 200 OK\r\n", "X-One: 1\r\n"));
    server_.at("/last-line", endless("HTTP/1.1 200 OK\r\nX-One: ", "xxxxxxxxxx"));
    server_.at("/last-trailer", endless(ok("Transfer-Encoding: chunked\r\n", "0\r\n"), "X: 1\r\n"));
    server_.at("/last-bomb",
               endless(ok("Content-Encoding: gzip\r\n", ""), gzipped(std::string(2'000'000, '0'))));
    for (const char* path :
         {"/last-interim", "/last-fields", "/last-line", "/last-trailer", "/last-bomb"}) {
        SCOPED_TRACE(path);
        fetch(get(path));
        ASSERT_TRUE(recorder_.error);
        EXPECT_EQ(recorder_.error->kind, host::TransferErrorKind::Other);
        EXPECT_LT(recorder_.body.size(), 32U * 1024 * 1024);
        EXPECT_TRUE(runUntil([&] { return server_.isClosed(path); }));
    }
}

TEST_F(CurlNetworkTest, InterimAnswersArePassedOver) {
    server_.at("/page", "HTTP/1.1 100 Continue\r\nX-Interim: 1\r\n\r\n"
                        "HTTP/1.1 103 Early Hints\r\n\r\n" +
                            sized("X-Final: 1\r\n", "page"));
    fetch(get("/page"));
    EXPECT_TRUE(recorder_.finished);
    EXPECT_EQ(recorder_.body, "page");
    EXPECT_THAT(recorder_.response->headers,
                ElementsAre(Pair("X-Final", "1"), Pair("Content-Length", "4")));
}

TEST_F(CurlNetworkTest, MoreThanAnnouncedIsCutAndHarmsNoLaterTransfer) {
    server_.at("/more", ok("Content-Length: 4\r\n", "four and more"));
    server_.at("/next", sized("", "next"));
    fetch(get("/more"));
    EXPECT_TRUE(recorder_.finished);
    EXPECT_EQ(recorder_.body, "four");
    fetch(get("/next"));
    EXPECT_TRUE(recorder_.finished) << (recorder_.error ? recorder_.error->message : "");
    EXPECT_EQ(recorder_.body, "next");
}

TEST_F(CurlNetworkTest, TimesOutWithoutAByteButNotWhileBytesCome) {
    server_.at("/silent", [](const LoopbackConnection& connection) { connection.waitForClose(); });
    server_.at("/stalls", [](const LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Length: 100\r\n", "some"));
        connection.waitForClose();
    });
    for (const char* path : {"/silent", "/stalls"}) {
        SCOPED_TRACE(path);
        auto request = get(path);
        request.timeout = 0.3;
        const double start = loop_.now();
        fetch(request);
        ASSERT_TRUE(recorder_.error);
        EXPECT_EQ(recorder_.error->kind, host::TransferErrorKind::TimedOut);
        EXPECT_GE(loop_.now() - start, 0.3);
        EXPECT_LT(loop_.now() - start, 3);
        EXPECT_TRUE(runUntil([&] { return server_.isClosed(path); }));
    }
    server_.at("/drips", [](const LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Length: 12\r\n", ""));
        for (int count = 0; count < 12; ++count) {
            (void)connection.send("x");
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    });
    auto request = get("/drips");
    request.timeout = 0.6;
    fetch(request);
    EXPECT_TRUE(recorder_.finished);
    EXPECT_EQ(recorder_.body, std::string(12, 'x'));
}

TEST_F(CurlNetworkTest, FollowsRedirectsHopByHop) {
    server_.at("/a", redirectTo("/b?x=1#part"));
    server_.at("/b?x=1", redirectTo(server_.url("/c")));
    server_.at("/c", sized("Content-Type: audio/mpeg\r\n", "song"));
    fetch(get("/a"));
    EXPECT_TRUE(recorder_.finished);
    EXPECT_EQ(recorder_.response->url, server_.url("/c"));
    EXPECT_EQ(recorder_.body, "song") << "the body of a redirect answer is dropped";
    EXPECT_THAT(recorder_.redirects,
                ElementsAre("302 " + server_.url("/b?x=1#part"), "302 " + server_.url("/c")));
}

TEST_F(CurlNetworkTest, RedirectsThatLeadNowhereFail) {
    struct Case {
        const char* path;
        const char* target;
        host::TransferErrorKind kind;
    };
    using Kind = host::TransferErrorKind;
    for (const Case each : {Case{"/loop", "/loop", Kind::TooManyRedirects},
                            {"/file", "file:///etc/passwd", Kind::UnsupportedScheme},
                            {"/ftp", "ftp://127.0.0.1/a", Kind::UnsupportedScheme},
                            {"/data", "data:text/plain,x", Kind::UnsupportedScheme},
                            {"/bad", "http://[::1/", Kind::BadURL}}) {
        SCOPED_TRACE(each.path);
        server_.at(each.path, redirectTo(each.target));
        fetch(get(each.path));
        ASSERT_TRUE(recorder_.error);
        EXPECT_EQ(recorder_.error->kind, each.kind);
        EXPECT_FALSE(recorder_.response);
    }
    EXPECT_EQ(recorder_.redirects.size(), 0U);
}

TEST_F(CurlNetworkTest, AddressesThatCannotBeFetchedFailAtTheNextTurn) {
    using Kind = host::TransferErrorKind;
    const std::pair<const char*, Kind> cases[] = {{"ftp://127.0.0.1/", Kind::UnsupportedScheme},
                                                  {"file:///etc/passwd", Kind::UnsupportedScheme},
                                                  {"http://", Kind::BadURL},
                                                  {"http://127.0.0.1:1/", Kind::CannotConnect}};
    for (const auto& [url, kind] : cases) {
        SCOPED_TRACE(url);
        host::TransferRequest request;
        request.url = url;
        fetch(request);
        ASSERT_TRUE(recorder_.error);
        EXPECT_EQ(recorder_.error->kind, kind) << recorder_.error->message;
    }
}

TEST_F(CurlNetworkTest, ACertificateThatNobodyVouchesForIsReportedAsSuch) {
    const TestCertificate certificate;
    ASSERT_TRUE(certificate.isMade());
    const std::string command = "exec openssl s_server -www -naccept 1 -accept 127.0.0.1:0 -cert " +
                                certificate.certificateFile() + " -key " + certificate.keyFile() +
                                " 2>/dev/null";
    FILE* server = ::popen(command.c_str(), "r");
    ASSERT_TRUE(server);
    int port = 0;
    char line[256];
    while (port == 0 && std::fgets(line, sizeof line, server))
        std::sscanf(line, "ACCEPT 127.0.0.1:%d", &port);
    host::TransferRequest request;
    request.url = "https://localhost:" + std::to_string(port) + "/";
    fetch(request);
    ::pclose(server);
    ASSERT_TRUE(recorder_.error);
    EXPECT_EQ(recorder_.error->kind, host::TransferErrorKind::Security);
    EXPECT_THAT(recorder_.error->message, HasSubstr("certificate of this server is not valid"));
}

TEST_F(CurlNetworkTest, ARedirectToAnotherSiteTakesNoSecretsAlong) {
    LoopbackServer other;
    server_.at("/here", sized("", "x"));
    other.at("/there", sized("", "x"));
    struct Case {
        std::string target;
        LoopbackServer& answers;
        bool isSameSite;
    };
    for (const Case& each :
         {Case{server_.url("/here"), server_, true}, Case{other.url("/there"), other, false}}) {
        server_.at("/from", redirectTo(each.target));
        auto request = get("/from");
        request.headers = {{"Authorization", "Basic c2VjcmV0"},
                           {"Referer", server_.url("/page?secret=1")}};
        fetch(request);
        EXPECT_TRUE(recorder_.finished);
        const std::string head = each.answers.requests().back();
        for (const char* secret : {"Authorization:", "secret=1"})
            EXPECT_EQ(head.find(secret) != std::string::npos, each.isSameSite) << head;
        EXPECT_THAT(head, HasSubstr("Referer: " + server_.url("/")));
    }
}

TEST_F(CurlNetworkTest, CancellingClosesTheConnection) {
    server_.at("/endless", [](const LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Type: video/mp4\r\nContent-Length: 9999999999\r\n", ""));
        while (connection.send(std::string(65536, 'x'))) {
        }
    });
    auto start = [&](const char* name) {
        SCOPED_TRACE(name);
        recorder_ = {};
        transfer_ = network_.start(get("/endless"), recorder_);
    };
    start("from the head");
    recorder_.onResponse = [&] {
        transfer_.reset();
    };
    EXPECT_TRUE(runUntil([&] { return server_.isClosed("/endless"); }));
    EXPECT_TRUE(recorder_.response);
    EXPECT_EQ(recorder_.body, "");

    server_.at("/other", [](const LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Length: 9999999999\r\n", "x"));
        connection.waitForClose();
    });
    recorder_ = {};
    transfer_ = network_.start(get("/other"), recorder_);
    ASSERT_TRUE(runUntil([&] { return !recorder_.body.empty(); }));
    transfer_.reset();
    EXPECT_TRUE(runUntil([&] { return server_.isClosed("/other"); }));
    EXPECT_FALSE(recorder_.isOver());
}

TEST_F(CurlNetworkTest, ConnectionsAreUsedAgain) {
    server_.at("/page", sized("", "page"));
    for (int count = 0; count < 5; ++count)
        fetch(get("/page"));
    EXPECT_EQ(server_.connections(), 1);
}

TEST_F(CurlNetworkTest, CookiesAreSentFreshForEachHopAndKeptOnlyWhenAsked) {
    server_.at("/login", sized("Set-Cookie: session=one; Path=/\r\n", ""));
    server_.at("/first", redirectTo("/second", "Set-Cookie: session=stolen; Path=/\r\n"));
    server_.at("/second", sized("Set-Cookie: session=two; Path=/\r\n", "x"));
    fetch(get("/login"));

    auto probe = get("/first");
    probe.cookies = host::CookieUse::SendOnly;
    fetch(probe);
    EXPECT_TRUE(recorder_.finished);
    auto requests = server_.requests();
    EXPECT_THAT(requests[1], HasSubstr("Cookie: session=one\r\n"));
    EXPECT_THAT(requests[2], HasSubstr("Cookie: session=stolen\r\n"))
        << "a cookie lives within the exchange that was told to set it";

    server_.at("/lax", sized("Set-Cookie: private=1; Path=/; SameSite=Lax\r\n", ""));
    fetch(get("/lax"));
    for (const bool isSameSite : {true, false}) {
        auto frame = get("/second");
        frame.cookies = host::CookieUse::SendOnly;
        frame.mainDocumentURL = isSameSite ? server_.url("/page") : "http://other.example/page";
        fetch(frame);
        const std::string head = server_.requests().back();
        // Whether a cookie that does not say so belongs to other sites' pages is the library's
        // choice.
        if (isSameSite) {
            EXPECT_THAT(head, HasSubstr("session=one"));
        }
        EXPECT_EQ(head.find("private=1") != std::string::npos, isSameSite) << head;
    }

    auto none = get("/second");
    none.cookies = host::CookieUse::None;
    fetch(none);
    EXPECT_THAT(server_.requests().back(), Not(HasSubstr("Cookie:")));

    fetch(get("/second"));
    EXPECT_THAT(server_.requests().back(), HasSubstr("session=one"));
    fetch(get("/second"));
    EXPECT_THAT(server_.requests().back(), HasSubstr("session=two"));
    GSList* cookies = soup_cookie_jar_all_cookies(sharedCookieJar());
    for (GSList* each = cookies; each; each = each->next)
        soup_cookie_jar_delete_cookie(sharedCookieJar(), static_cast<SoupCookie*>(each->data));
    g_slist_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
}

TEST_F(CurlNetworkTest, TheRequestCarriesWhatItWasGiven) {
    server_.at("/post", sized("", "x"));
    auto request = get("/post");
    request.ignoresCache = true;
    request.headers = {{"X-One", "1"}, {"User-Agent", "Mine/1"}, {"X-Bad", "a\r\nX-Evil: 1"}};
    fetch(request);
    const std::string head = server_.requests().back();
    EXPECT_THAT(head, HasSubstr("GET /post HTTP/1.1\r\n"));
    EXPECT_THAT(head, HasSubstr("X-One: 1\r\n"));
    EXPECT_THAT(head, HasSubstr("User-Agent: Mine/1\r\n"));
    EXPECT_THAT(head, HasSubstr("Cache-Control: no-cache\r\n"));
    EXPECT_THAT(head, Not(HasSubstr("X-Evil")));
}

}
}
