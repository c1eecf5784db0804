#include "platform/linux/network/CurlNetwork.h"

#include "platform/linux/loop/GLibEventLoop.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/network/LoopbackServer.h"
#include "tests/linux/network/Packed.h"

namespace vistrel {
namespace {

using ::testing::Not;
using ::testing::Pair;

struct TransferRecorder : host::TransferClient {
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
        body.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        largestChunk = std::max(largestChunk, bytes.size());
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

/// The start of an answer, after which nothing comes until the client leaves.
LoopbackServer::Answer stalledAfter(const std::string& start) {
    return [start](LoopbackConnection& connection) {
        (void)connection.send(start);
        connection.waitForClose();
    };
}

class CurlNetworkTest : public ::testing::Test {
protected:
    using Kind = host::TransferErrorKind;

    /// Of a path of the server or of a whole address.
    host::TransferRequest get(const std::string& where,
                              host::CookieUse cookies = host::CookieUse::SendAndStore) const {
        host::TransferRequest request;
        request.url = where.starts_with('/') ? server_.url(where) : where;
        request.timeout = 10;
        request.cookies = cookies;
        return request;
    }
    /// The body; the reason when the transfer fails.
    std::string fetch(host::TransferRequest request) {
        recorder_ = {};
        transfer_ = network_.start(std::move(request), recorder_);
        EXPECT_FALSE(recorder_.isOver()) << "nothing may be reported from inside start";
        EXPECT_TRUE(turnUntil([&] { return recorder_.isOver(); }));
        transfer_.reset();
        return recorder_.finished ? recorder_.body : "failed: " + error().message;
    }
    /// Why the transfer fails; nothing when it does not.
    std::optional<Kind> failureOf(host::TransferRequest request) {
        fetch(std::move(request));
        return recorder_.finished ? std::nullopt : std::optional(error().kind);
    }
    host::TransferError error() const { return recorder_.error.value_or(host::TransferError{}); }
    /// What the server is asked, at last.
    std::string headOf(host::TransferRequest request) {
        EXPECT_EQ(failureOf(std::move(request)), std::nullopt);
        return server_.requests().back();
    }

    bool closes(const std::string& path) {
        return turnUntil([&] { return server_.isClosed(path); });
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
    EXPECT_TRUE(fetch(get("/film")) == body);
    EXPECT_EQ(recorder_.response->status, 200);
    EXPECT_EQ(recorder_.response->mimeType, "Video/MP4") << "the case is the server's";
    EXPECT_EQ(recorder_.response->expectedLength, 3'000'000);
    EXPECT_EQ(recorder_.response->url, server_.url("/film"));
    EXPECT_LE(recorder_.largestChunk, 256U * 1024);
}

TEST_F(CurlNetworkTest, AnswersOfUnknownLengthHaveNone) {
    const std::string text(3'000'000, 'a');
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"gzip", sized("Content-Encoding: gzip\r\n", packed(text)), text},
        {"chunked", ok("Transfer-Encoding: chunked\r\n", "3\r\nabc\r\n0\r\n\r\n"), "abc"},
        {"until the end", ok("", "until the end"), "until the end"},
        {"unchanged", "HTTP/1.1 304 Not Modified\r\nContent-Encoding: gzip\r\n\r\n", ""},
    };
    for (const auto& [name, bytes, whole] : cases) {
        server_.at("/last", bytes);
        EXPECT_TRUE(fetch(get("/last")) == whole) << name;
        EXPECT_EQ(recorder_.response->expectedLength, -1) << name;
    }
}

TEST_F(CurlNetworkTest, ABodyThatIsNotWholeNeverCompletes) {
    const std::string start = packed(std::string(9'000, 'q')).substr(0, 20);
    const std::string chunked = "Transfer-Encoding: chunked\r\n";
    const std::string gzip = "Content-Encoding: gzip\r\n";
    const struct {
        const char* name;
        std::string bytes;
        Kind kind = Kind::ConnectionLost;
    } cases[] = {
        {"shorter than announced", ok("Content-Length: 100\r\n", "only this")},
        {"cut inside a chunk", ok(chunked, "a0\r\nonly this")},
        {"cut between chunks", ok(chunked, "3\r\nabc\r\n")},
        {"cut after the head", ok(chunked, "")},
        {"size that is not a number", ok(chunked, "3\r\nabc\r\nzz\r\nabc\r\n")},
        {"negative size", ok(chunked, "3\r\nabc\r\n-5\r\nabc\r\n")},
        {"size too large", ok(chunked, "fffffffffffffffff\r\nabc")},
        {"cut in the head", "HTTP/1.1 200 OK\r\nContent-Le"},
        {"nothing", ""},
        {"cut gzip of a known length", ok(gzip + "Content-Length: 500\r\n", start)},
        {"cut gzip", ok(gzip, start)},
        {"gzip cut after the head", ok(gzip, "")},
        {"cut gzip in whole chunks", ok(gzip + chunked, "14\r\n" + start + "\r\n0\r\n\r\n")},
        {"not gzip at all", ok(gzip, "plain text"), Kind::Other},
        {"not HTTP", "220 mail.example ESMTP\r\n", Kind::Other},
    };
    for (const auto& each : cases) {
        server_.at("/last", each.bytes);
        EXPECT_EQ(failureOf(get("/last")), each.kind) << each.name;
    }
}

TEST_F(CurlNetworkTest, NoServerHoldsTheLoop) {
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"/last-interim", "", "HTTP/1.1 100 Continue\r\n\r\n"},
        {"/last-fields", "HTTP/1.1 200 OK\r\n", "X-One: 1\r\n"},
        {"/last-line", "HTTP/1.1 200 OK\r\nX-One: ", "xxxxxxxxxx"},
        {"/last-trailer", ok("Transfer-Encoding: chunked\r\n", "0\r\n"), "X: 1\r\n"},
        {"/last-bomb", ok("Content-Encoding: gzip\r\n", ""), packed(std::string(2'000'000, '0'))},
    };
    for (const auto& [path, first, more] : cases) {
        server_.at(path, [start = first, rest = more](const LoopbackConnection& connection) {
            std::string much;
            while (much.size() < 60'000)
                much += rest;
            for (bool goesOn = connection.send(start); goesOn;)
                goesOn = connection.send(much);
        });
        EXPECT_EQ(failureOf(get(path)), Kind::Other) << path;
        EXPECT_LT(recorder_.body.size(), 32U * 1024 * 1024);
        EXPECT_TRUE(closes(path)) << path;
    }
}

TEST_F(CurlNetworkTest, InterimAnswersArePassedOver) {
    server_.at("/page", "HTTP/1.1 100 Continue\r\nX-Interim: 1\r\n\r\n"
                        "HTTP/1.1 103 Early Hints\r\n\r\n" +
                            sized("X-Final: 1\r\n", "page"));
    EXPECT_EQ(fetch(get("/page")), "page");
    EXPECT_THAT(recorder_.response->headers,
                ElementsAre(Pair("X-Final", "1"), Pair("Content-Length", "4")));
}

TEST_F(CurlNetworkTest, MoreThanAnnouncedIsCutAndHarmsNoLaterTransfer) {
    server_.at("/more", ok("Content-Length: 4\r\n", "four and more"));
    server_.at("/next", sized("", "next"));
    EXPECT_EQ(fetch(get("/more")), "four");
    EXPECT_EQ(fetch(get("/next")), "next");
}

TEST_F(CurlNetworkTest, TimesOutWithoutAByteButNotWhileBytesCome) {
    server_.at("/silent", stalledAfter(""));
    server_.at("/stalls", stalledAfter(ok("Content-Length: 100\r\n", "some")));
    for (const char* path : {"/silent", "/stalls"}) {
        auto request = get(path);
        request.timeout = 0.3;
        const double start = loop_.now();
        EXPECT_EQ(failureOf(request), Kind::TimedOut) << path;
        EXPECT_GE(loop_.now() - start, 0.3);
        EXPECT_LT(loop_.now() - start, 3);
        EXPECT_TRUE(closes(path)) << path;
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
    EXPECT_EQ(fetch(request), std::string(12, 'x'));
}

TEST_F(CurlNetworkTest, FollowsRedirectsHopByHop) {
    server_.at("/a", redirectTo("/b?x=1#part"));
    server_.at("/b?x=1", redirectTo(server_.url("/c")));
    server_.at("/c", sized("Content-Type: audio/mpeg\r\n", "song"));
    EXPECT_EQ(fetch(get("/a")), "song") << "the body of a redirect answer is dropped";
    EXPECT_EQ(recorder_.response->url, server_.url("/c"));
    EXPECT_THAT(recorder_.redirects,
                ElementsAre("302 " + server_.url("/b?x=1#part"), "302 " + server_.url("/c")));
}

TEST_F(CurlNetworkTest, AddressesThatCannotBeFetchedFailAtOnceAndAfterARedirect) {
    server_.at("/loop", redirectTo("/loop"));
    const std::pair<std::string, Kind> cases[] = {{"ftp://127.0.0.1/", Kind::UnsupportedScheme},
                                                  {"file:///etc/passwd", Kind::UnsupportedScheme},
                                                  {"data:text/plain,x", Kind::UnsupportedScheme},
                                                  {"http://", Kind::BadURL},
                                                  {"http://[::1/", Kind::BadURL},
                                                  {"http://127.0.0.1:1/", Kind::CannotConnect},
                                                  {server_.url("/loop"), Kind::TooManyRedirects}};
    for (const auto& [url, kind] : cases) {
        server_.at("/from", redirectTo(url));
        for (const std::string& start : {url, server_.url("/from")}) {
            EXPECT_EQ(failureOf(get(start)), kind) << url << " from " << start;
            EXPECT_FALSE(recorder_.response) << url << " from " << start;
        }
    }
}

TEST_F(CurlNetworkTest, ACertificateThatNobodyVouchesForIsReportedAsSuch) {
    const TestCertificate certificate;
    const LoopbackListener server(
        [&](LoopbackConnection& connection) { (void)connection.encrypt(certificate); });
    const auto request = get("https://localhost:" + std::to_string(server.port()) + "/");
    ASSERT_EQ(failureOf(request), Kind::Security);
    EXPECT_THAT(error().message, HasSubstr("certificate of this server is not valid"));
}

TEST_F(CurlNetworkTest, TheStatusOfARedirectDecidesTheNextMethod) {
    server_.at("/target", sized("", ""));
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"301", "POST", "GET"},  {"302", "POST", "GET"}, {"303", "PUT", "GET"},
        {"303", "HEAD", "HEAD"}, {"302", "PUT", "PUT"},  {"307", "POST", "POST"}};
    for (const auto& [status, method, then] : cases) {
        server_.at("/from",
                   "HTTP/1.1 " + status + " x\r\nLocation: /target\r\nContent-Length: 0\r\n\r\n");
        auto request = get("/from");
        request.method = method;
        request.headers = {{"Content-Type", "text/plain"}};
        const std::string head = headOf(request);
        EXPECT_THAT(head, StartsWith(then + " /target ")) << status << method;
        EXPECT_EQ(head.find("Content-Type") == std::string::npos, method != then)
            << status << method;
    }
}

TEST_F(CurlNetworkTest, ARedirectToAnotherSiteTakesNoSecretsAlong) {
    LoopbackServer other;
    server_.at("/here", sized("", "x"));
    other.at("/there", sized("", "x"));
    for (const bool isSameSite : {true, false}) {
        server_.at("/from", redirectTo(isSameSite ? server_.url("/here") : other.url("/there")));
        auto request = get("/from");
        request.headers = {{"Authorization", "Basic c2VjcmV0"},
                           {"Referer", server_.url("/page?secret=1")}};
        EXPECT_EQ(fetch(request), "x");
        const std::string head = (isSameSite ? server_ : other).requests().back();
        for (const char* secret : {"Authorization:", "secret=1"})
            EXPECT_EQ(head.find(secret) != std::string::npos, isSameSite) << head;
        EXPECT_THAT(head, HasSubstr("Referer: " + server_.url("/")));
    }
}

TEST_F(CurlNetworkTest, CancellingClosesTheConnection) {
    server_.at("/endless", [](const LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Length: 9999999999\r\n", ""));
        while (connection.send(std::string(65536, 'x'))) {
        }
    });
    recorder_.onResponse = [&] {
        transfer_.reset();
    };
    transfer_ = network_.start(get("/endless"), recorder_);
    EXPECT_TRUE(closes("/endless"));
    EXPECT_TRUE(recorder_.response);
    EXPECT_EQ(recorder_.body, "");

    server_.at("/stalls", stalledAfter(ok("Content-Length: 9999999999\r\n", "x")));
    recorder_ = {};
    transfer_ = network_.start(get("/stalls"), recorder_);
    ASSERT_TRUE(turnUntil([&] { return !recorder_.body.empty(); }));
    transfer_.reset();
    EXPECT_TRUE(closes("/stalls"));
    EXPECT_FALSE(recorder_.isOver());
}

TEST_F(CurlNetworkTest, ConnectionsAreUsedAgain) {
    server_.at("/page", sized("", "page"));
    for (int count = 0; count < 5; ++count)
        fetch(get("/page"));
    EXPECT_EQ(server_.connections(), 1);
}

TEST_F(CurlNetworkTest, CookiesAreSentFreshForEachHopAndKeptOnlyWhenAsked) {
    using enum host::CookieUse;
    server_.at("/login", sized("Set-Cookie: session=one; Path=/\r\n", ""));
    server_.at("/first", redirectTo("/second", "Set-Cookie: session=stolen; Path=/\r\n"));
    server_.at("/second", sized("Set-Cookie: session=two; Path=/\r\n", "x"));
    server_.at("/lax", sized("Set-Cookie: private=1; Path=/; SameSite=Lax\r\n", ""));
    fetch(get("/login"));
    EXPECT_THAT(headOf(get("/first", SendOnly)), HasSubstr("Cookie: session=stolen\r\n"))
        << "a cookie lives within the exchange that was told to set it";
    EXPECT_THAT(server_.requests()[1], HasSubstr("Cookie: session=one\r\n"));

    fetch(get("/lax"));
    for (const bool isSameSite : {true, false}) {
        auto frame = get("/second", SendOnly);
        frame.mainDocumentURL = isSameSite ? server_.url("/page") : "http://other.example/page";
        const std::string head = headOf(frame);
        // Whether a cookie that does not say so belongs to other sites' pages is the library's
        // choice.
        if (isSameSite) {
            EXPECT_THAT(head, HasSubstr("session=one"));
        }
        EXPECT_EQ(head.find("private=1") != std::string::npos, isSameSite) << head;
    }
    EXPECT_THAT(headOf(get("/second", None)), Not(HasSubstr("Cookie:")));
    EXPECT_THAT(headOf(get("/second")), HasSubstr("session=one"));
    EXPECT_THAT(headOf(get("/second")), HasSubstr("session=two"));
}

TEST_F(CurlNetworkTest, TheRequestCarriesWhatItWasGiven) {
    server_.at("/post", sized("", "x"));
    auto request = get("/post");
    request.ignoresCache = true;
    request.headers = {{"X-One", "1"}, {"User-Agent", "Mine/1"}, {"X-Bad", "a\r\nX-Evil: 1"}};
    const std::string head = headOf(request);
    for (const char* line : {"GET /post HTTP/1.1\r\n", "X-One: 1\r\n", "User-Agent: Mine/1\r\n",
                             "Cache-Control: no-cache\r\n", "Accept-Encoding: gzip, deflate\r\n"})
        EXPECT_THAT(head, HasSubstr(line));
    EXPECT_THAT(head, Not(HasSubstr("X-Evil")));
}

}
}
