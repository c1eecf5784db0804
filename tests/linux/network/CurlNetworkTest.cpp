#include "platform/linux/network/CurlNetwork.h"

#include "platform/linux/loop/GLibEventLoop.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestCertificate.h"
#include "tests/linux/network/LoopbackServer.h"
#include "tests/linux/network/Packed.h"

namespace vistrel {
namespace {

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

class CurlNetworkTest : public ::testing::Test {
protected:
    host::TransferRequest get(const std::string& path) const {
        host::TransferRequest request;
        request.url = server_.url(path);
        request.timeout = 10;
        return request;
    }
    void fetch(const std::string& url) {
        host::TransferRequest request;
        request.url = url;
        fetch(std::move(request));
    }
    void fetch(host::TransferRequest request) {
        recorder_ = {};
        transfer_ = network_.start(std::move(request), recorder_);
        ASSERT_FALSE(recorder_.isOver()) << "nothing may be reported from inside start";
        ASSERT_TRUE(turnUntil([&] { return recorder_.isOver(); }));
        transfer_.reset();
    }

    /// Why the transfer failed; nothing when it did not.
    std::optional<host::TransferErrorKind> failure() const {
        return recorder_.error ? std::optional(recorder_.error->kind) : std::nullopt;
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
    const struct {
        const char* name;
        std::string bytes;
        std::string body;
    } cases[] = {
        {"gzip", sized("Content-Encoding: gzip\r\n", packed(text)), text},
        {"chunked", ok("Transfer-Encoding: chunked\r\n", "3\r\nabc\r\n0\r\n\r\n"), "abc"},
        {"until the end", ok("", "until the end"), "until the end"},
        {"unchanged", "HTTP/1.1 304 Not Modified\r\nContent-Encoding: gzip\r\n\r\n", ""},
    };
    for (const auto& each : cases) {
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
        SCOPED_TRACE(each.name);
        server_.at("/last", each.bytes);
        fetch(get("/last"));
        EXPECT_FALSE(recorder_.finished);
        EXPECT_EQ(failure(), each.kind);
    }
}

TEST_F(CurlNetworkTest, NoServerHoldsTheLoop) {
    const struct {
        const char* path;
        std::string first;
        std::string more;
    } cases[] = {
        {"/last-interim", "", "HTTP/1.1 100 Continue\r\n\r\n"},
        {"/last-fields", "HTTP/1.1 200 OK\r\n", "X-One: 1\r\n"},
        {"/last-line", "HTTP/1.1 200 OK\r\nX-One: ", "xxxxxxxxxx"},
        {"/last-trailer", ok("Transfer-Encoding: chunked\r\n", "0\r\n"), "X: 1\r\n"},
        {"/last-bomb", ok("Content-Encoding: gzip\r\n", ""), packed(std::string(2'000'000, '0'))},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.path);
        server_.at(each.path, [&each](const LoopbackConnection& connection) {
            std::string more;
            while (more.size() < 60'000)
                more += each.more;
            for (bool goesOn = connection.send(each.first); goesOn;)
                goesOn = connection.send(more);
        });
        fetch(get(each.path));
        EXPECT_EQ(failure(), host::TransferErrorKind::Other);
        EXPECT_LT(recorder_.body.size(), 32U * 1024 * 1024);
        EXPECT_TRUE(turnUntil([&] { return server_.isClosed(each.path); }));
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
    server_.at("/silent", [](LoopbackConnection& connection) { connection.waitForClose(); });
    server_.at("/stalls", [](LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Length: 100\r\n", "some"));
        connection.waitForClose();
    });
    for (const char* path : {"/silent", "/stalls"}) {
        SCOPED_TRACE(path);
        auto request = get(path);
        request.timeout = 0.3;
        const double start = loop_.now();
        fetch(request);
        EXPECT_EQ(failure(), host::TransferErrorKind::TimedOut);
        EXPECT_GE(loop_.now() - start, 0.3);
        EXPECT_LT(loop_.now() - start, 3);
        EXPECT_TRUE(turnUntil([&] { return server_.isClosed(path); }));
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

TEST_F(CurlNetworkTest, AddressesThatCannotBeFetchedFailAtOnceAndAfterARedirect) {
    using Kind = host::TransferErrorKind;
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
            SCOPED_TRACE(testing::Message() << url << " from " << start);
            fetch(start);
            EXPECT_EQ(failure(), kind);
            EXPECT_FALSE(recorder_.response);
        }
    }
}

TEST_F(CurlNetworkTest, ACertificateThatNobodyVouchesForIsReportedAsSuch) {
    const TestCertificate certificate;
    ASSERT_TRUE(certificate.isMade());
    const LoopbackListener server([&](LoopbackConnection& connection) {
        (void)connection.encrypt(certificate.certificateFile(), certificate.keyFile());
    });
    fetch("https://localhost:" + std::to_string(server.port()) + "/");
    ASSERT_EQ(failure(), host::TransferErrorKind::Security);
    EXPECT_THAT(recorder_.error->message, HasSubstr("certificate of this server is not valid"));
}

TEST_F(CurlNetworkTest, TheStatusOfARedirectDecidesTheNextMethod) {
    server_.at("/target", sized("", ""));
    const struct {
        const char* status;
        const char* method;
        const char* then;
    } cases[] = {{"301", "POST", "GET"},  {"302", "POST", "GET"}, {"303", "PUT", "GET"},
                 {"303", "HEAD", "HEAD"}, {"302", "PUT", "PUT"},  {"307", "POST", "POST"}};
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.status) + each.method);
        server_.at("/from", std::string("HTTP/1.1 ") + each.status +
                                " x\r\nLocation: /target\r\nContent-Length: 0\r\n\r\n");
        auto request = get("/from");
        request.method = each.method;
        request.headers = {{"Content-Type", "text/plain"}};
        fetch(request);
        EXPECT_TRUE(recorder_.finished);
        const std::string head = server_.requests().back();
        EXPECT_THAT(head, StartsWith(std::string(each.then) + " /target "));
        EXPECT_EQ(head.find("Content-Type") == std::string::npos,
                  each.method != std::string(each.then));
    }
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
        (void)connection.send(ok("Content-Length: 9999999999\r\n", ""));
        while (connection.send(std::string(65536, 'x'))) {
        }
    });
    recorder_.onResponse = [&] {
        transfer_.reset();
    };
    transfer_ = network_.start(get("/endless"), recorder_);
    EXPECT_TRUE(turnUntil([&] { return server_.isClosed("/endless"); }));
    EXPECT_TRUE(recorder_.response);
    EXPECT_EQ(recorder_.body, "");

    server_.at("/stalls", [](LoopbackConnection& connection) {
        (void)connection.send(ok("Content-Length: 9999999999\r\n", "x"));
        connection.waitForClose();
    });
    recorder_ = {};
    transfer_ = network_.start(get("/stalls"), recorder_);
    ASSERT_TRUE(turnUntil([&] { return !recorder_.body.empty(); }));
    transfer_.reset();
    EXPECT_TRUE(turnUntil([&] { return server_.isClosed("/stalls"); }));
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
