#include "platform/foundation/NSURLConnection.h"

#include "platform/foundation/FinalAddress.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/foundation/NSURLResponse.h"
#include "tests/support/Heard.h"
#include "tests/support/HostTest.h"

namespace vistrel {
namespace {

using testing::EndsWith;

constexpr const char* kURL = "http://site/clip.mp4";

/// Records what a connection tells it.
class EventRecorder : public NSURLConnectionDelegate {
public:
    std::optional<NSURLRequest>
    connectionWillSendRequestRedirectResponse(NSURLConnection&, const NSURLRequest& request,
                                              const NSURLResponse* redirectResponse) override {
        if (redirectResponse) {
            heard("redirect " + std::to_string(redirectResponse->statusCode()) + " " +
                  request.HTTPMethod() + " " + request.URL()->absoluteString());
        }
        return redirectResponse && onRedirect ? onRedirect(request) : request;
    }
    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override {
        heard("response " + std::to_string(response.statusCode()) + " " + response.MIMEType() +
              " " + std::to_string(response.expectedContentLength()) + " " +
              response.URL().absoluteString());
        if (onResponse)
            onResponse(connection);
    }
    void connectionDidReceiveData(NSURLConnection& connection,
                                  std::span<const std::byte> data) override {
        body.append(reinterpret_cast<const char*>(data.data()), data.size());
        ++chunks;
        if (onData)
            onData(connection);
    }
    void connectionDidFinishLoading(NSURLConnection&) override { heard("finish"); }
    void connectionDidFailWithError(NSURLConnection&, const NSError& error) override {
        heard("fail " + std::to_string(error.code()) + " " + error.localizedDescription());
    }

    support::Heard heard;
    std::string body;
    int chunks = 0;
    std::function<void(NSURLConnection&)> onResponse;
    std::function<void(NSURLConnection&)> onData;
    std::function<std::optional<NSURLRequest>(const NSURLRequest&)> onRedirect;
};

class NSURLConnectionTest : public support::HostTest {
protected:
    std::shared_ptr<NSURLConnection> connect(NSURLRequest request) {
        recorder_ = std::make_shared<EventRecorder>();
        lastRecorder_ = recorder_;
        return NSURLConnection::withRequestDelegate(std::move(request), recorder_);
    }
    std::shared_ptr<NSURLConnection> connect(const char* url) {
        return connect(NSURLRequest(NSURL::URLWithString(url)));
    }

    void expectDelegateReleased() {
        recorder_.reset();
        EXPECT_TRUE(lastRecorder_.expired());
    }

    std::shared_ptr<EventRecorder> recorder_;
    std::weak_ptr<EventRecorder> lastRecorder_;
};

TEST_F(NSURLConnectionTest, ReportsResponseDataAndEndInOrderAndLivesUntilThen) {
    const std::string body(100'000, 'x');
    network().at(kURL).type("video/mp4").body(body);
    std::weak_ptr<NSURLConnection> connection = connect(kURL);
    const auto recorder = recorder_.get();
    const std::weak_ptr<EventRecorder> held = std::exchange(recorder_, nullptr);

    EXPECT_EQ(recorder->heard.take(), "") << "nothing is reported before start returns";
    EXPECT_FALSE(connection.expired()) << "a running connection keeps itself alive";
    recorder->onData = [&](NSURLConnection&) {
        EXPECT_FALSE(held.expired());
    };
    recorder->onResponse = [&](NSURLConnection&) {
        recorder_ = held.lock();
    };
    turn();

    EXPECT_EQ(recorder_->heard.take(),
              "response 200 video/mp4 100000 http://site/clip.mp4, finish");
    EXPECT_EQ(recorder_->body, body);
    EXPECT_GT(recorder_->chunks, 1);
    EXPECT_TRUE(connection.expired());
    expectDelegateReleased();
}

TEST_F(NSURLConnectionTest, NothingIsReportedAfterCancel) {
    constexpr const char* kResponse = "response 200 text/html 6 http://site/clip.mp4";
    network().at(kURL).body("abcdef").chunks({2, 2, 2});
    connect(kURL);
    recorder_->onResponse = &NSURLConnection::cancel;
    turn();
    EXPECT_EQ(recorder_->heard.take(), kResponse);
    EXPECT_EQ(recorder_->body, "");

    connect(kURL);
    recorder_->onData = &NSURLConnection::cancel;
    turn();
    EXPECT_EQ(recorder_->heard.take(), kResponse);
    EXPECT_EQ(recorder_->body, "ab");

    connect(kURL)->cancel();
    turn();
    EXPECT_EQ(recorder_->heard.take(), "");
    expectDelegateReleased();
}

TEST_F(NSURLConnectionTest, EachFailureHasItsCode) {
    using Kind = host::TransferErrorKind;
    using Script = std::function<void()>;
    const std::tuple<const char*, const char*, Script, const char*> cases[] = {
        {"no address", "not an address", [] {}, "fail -1000 bad URL"},
        {"other scheme", "ftp://site/a", [] {}, "fail -1002 unsupported URL"},
        {"nobody answers", kURL, [] {}, "fail -1004 Could not connect to the server."},
        {"shorter than announced", kURL, [this] { network().at(kURL).body("abc").announces(4); },
         "fail -1005 The network connection was lost."},
        {"reset", kURL,
         [this] { network().at(kURL).body("abc").failsAfter(2, Kind::ConnectionLost, "reset"); },
         "fail -1005 reset"},
        {"endless redirects", kURL, [this] { network().at(kURL).redirectsTo(kURL); },
         "fail -1007 too many HTTP redirects"},
        {"certificate", kURL, [this] { network().at(kURL).fails(Kind::Security, "bad"); },
         "fail -1200 bad"},
        {"redirect to a file", kURL,
         [this] { network().at(kURL).redirectsTo("file:///etc/passwd"); },
         "fail -1002 unsupported URL"},
    };
    for (const auto& [name, url, script, last] : cases) {
        SCOPED_TRACE(name);
        script();
        connect(url);
        advance(1);
        EXPECT_THAT(recorder_->heard.take(), EndsWith(last));
        expectDelegateReleased();
    }
}

TEST_F(NSURLConnectionTest, TheFinalAddressIsFoundWithoutTheBody) {
    network().at(kURL).redirectsTo("http://site/b", 302);
    network().at("http://site/b").redirectsTo("https://other/film", 307);
    network()
        .at("https://other/film")
        .type("video/mp4")
        .body("a long film")
        .secondsBetweenChunks(9);
    network().at("http://site/gone").fails(host::TransferErrorKind::CannotConnect, "refused");
    std::vector<std::string> found;
    for (const char* start : {kURL, "http://site/gone"})
        findFinalAddress(*NSURL::URLWithString(start), [&](const std::optional<NSURL>& address) {
            found.push_back(address ? address->absoluteString() : "nothing");
        });
    turn();
    EXPECT_THAT(found, UnorderedElementsAre("https://other/film", "nothing"));
    EXPECT_EQ(network().runningTransfers(), 0);
}

TEST_F(NSURLConnectionTest, APostBecomesAGetWhereBrowsersMakeItOne) {
    network().at("http://site/b").body("x");
    NSURLRequest request(NSURL::URLWithString(kURL));
    request.setHTTPMethod("POST");
    for (const auto& [status, method] :
         std::map<int, std::string>{{301, "GET"}, {302, "GET"}, {303, "GET"}, {307, "POST"}}) {
        network().at(kURL).redirectsTo("http://site/b", status);
        connect(request);
        turn();
        EXPECT_THAT(recorder_->heard.take(), StartsWith("redirect " + std::to_string(status) + " " +
                                                        method + " http://site/b,"));
        EXPECT_EQ(network().requests().back().method, method);
    }
}

TEST_F(NSURLConnectionTest, ARefusedRedirectEndsWithTheRedirectResponse) {
    network().at(kURL).redirectsTo("http://site/b");
    connect(kURL);
    recorder_->onRedirect = [](const NSURLRequest&) {
        return std::nullopt;
    };
    turn();
    EXPECT_EQ(
        recorder_->heard.take(),
        "redirect 302 GET http://site/b, response 302 text/html -1 http://site/clip.mp4, finish");
    EXPECT_THAT(network().requestedURLs(), ElementsAre(kURL));
}

TEST_F(NSURLConnectionTest, ADelegateMaySendARedirectElsewhere) {
    network().at(kURL).redirectsTo("http://site/b");
    network().at("http://site/mine").body("mine");
    connect(kURL);
    recorder_->onRedirect = [](const NSURLRequest& request) {
        NSURLRequest changed(NSURL::URLWithString("http://site/mine"), request.cachePolicy(),
                             request.timeoutInterval());
        changed.setValueForHTTPHeaderField("1", "X-Mine");
        return changed;
    };
    turn();
    EXPECT_EQ(recorder_->body, "mine");
    EXPECT_THAT(network().requestedURLs(), ElementsAre(kURL, "http://site/mine"));
    EXPECT_EQ(support::ScriptedNetwork::header(network().requests().back(), "x-mine"), "1");
}

TEST_F(NSURLConnectionTest, ACredentialGoesOnlyToItsOriginEvenAfterRedirects) {
    auto& storage = NSURLCredentialStorage::sharedCredentialStorage();
    storage.setCredentialForURL({"Aladdin", "open sesame"},
                                *NSURL::URLWithString("HTTP://Site:80/anything"));
    storage.setCredentialForURL({"digest", "secret", false},
                                *NSURL::URLWithString("https://other/"));
    const std::vector<std::string> routes[] = {
        {"http://site/a", "http://site/b", "https://other/c", "http://site/d"},
        {"https://other/a", "http://site/b"},
        {"http://site:8080/a", "http://site/b"},
    };
    for (const auto& route : routes) {
        for (std::size_t i = 0; i + 1 < route.size(); ++i)
            network().at(route[i]).redirectsTo(route[i + 1]);
        network().at(route.back()).body("x");
        network().forgetRequests();
        NSURLRequest request(NSURL::URLWithString(route.front()));
        request.setValueForHTTPHeaderField("http://page/?secret", "Referer");
        connect(request);
        turn();
        turn();
        EXPECT_THAT(recorder_->heard.take(), EndsWith(", finish"));
        EXPECT_EQ(network().requestedURLs(), route);
        bool hasLeft = false;
        for (const auto& sent : network().requests()) {
            const bool isAtSite = sent.url.starts_with("http://site/");
            hasLeft = hasLeft || isAtSite != route.front().starts_with("http://site/");
            EXPECT_EQ(support::ScriptedNetwork::header(sent, "Authorization"),
                      isAtSite ? "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ==" : "")
                << sent.url;
            EXPECT_EQ(support::ScriptedNetwork::header(sent, "Referer"),
                      hasLeft ? "http://page/" : "http://page/?secret")
                << sent.url;
        }
    }
    network().at("http://site/a").redirectsTo("https://other/c");
    network().at("https://other/c").redirectsTo("http://site/a");
    connect("http://site/a");
    for (int i = 0; i < 100; ++i)
        turn();
    EXPECT_THAT(recorder_->heard.take(), EndsWith(", fail -1007 too many HTTP redirects"));
    storage.removeAll();
}

TEST_F(NSURLConnectionTest, ARequestArrivesAsItWasMade) {
    network().at(kURL).body("x");
    NSURLRequest request(NSURL::URLWithString(kURL),
                         NSURLRequestCachePolicy::ReloadIgnoringLocalCacheData, 45.0);
    request.setValueForHTTPHeaderField("one", "X-Field");
    request.setValueForHTTPHeaderField("two", "x-field");
    request.setCookies(NSURLRequestCookies::SendOnly);
    request.setMainDocumentURL(NSURL::URLWithString("http://page/"));
    connect(request);
    turn();
    const auto& sent = network().requests().front();
    EXPECT_TRUE(sent.ignoresCache);
    EXPECT_EQ(sent.timeout, 45.0);
    EXPECT_EQ(sent.cookies, host::CookieUse::SendOnly);
    EXPECT_EQ(sent.mainDocumentURL, "http://page/");
    EXPECT_EQ(sent.headers, (host::HeaderFields{{"X-Field", "two"}}));
}

TEST_F(NSURLConnectionTest, ARepeatedHeaderFieldIsReadAsOne) {
    const NSURLResponse response(*NSURL::URLWithString("http://host/"), 200,
                                 {{"X-List", "a b"},
                                  {"Content-Disposition", "attachment; filename=first.mp4"},
                                  {"x-list", "c"},
                                  {"content-disposition", "attachment; filename=second.mp4"}},
                                 "video/mp4", -1);
    EXPECT_EQ(response.valueForHTTPHeaderField("X-LIST"), "a b, c");
    EXPECT_EQ(response.valueForHTTPHeaderField("X-Other"), "");
    EXPECT_EQ(response.suggestedFilename(), "first.mp4");
}

TEST_F(NSURLConnectionTest, StartingTwiceSendsOnce) {
    network().at(kURL).body("x");
    recorder_ = std::make_shared<EventRecorder>();
    const auto connection =
        NSURLConnection::withRequestDelegate(NSURLRequest(NSURL::URLWithString(kURL)), recorder_,
                                             NSURLConnection::StartsImmediately::No);
    turn();
    EXPECT_THAT(network().requests(), IsEmpty());
    connection->start();
    connection->start();
    turn();
    connection->start();
    turn();
    EXPECT_EQ(network().requests().size(), 1U);
    EXPECT_EQ(recorder_->heard.take(), "response 200 text/html 1 http://site/clip.mp4, finish");
}

}
}
