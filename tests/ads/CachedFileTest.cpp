#include "ads/Network/GADCachedFile.h"

#include "ads/Network/GADCachedFilePath.h"
#include "ads/Network/GADHTTPDate.h"
#include "ads/Network/GADNetworkUtilities.h"
#include "tests/ads/AdsTest.h"
#include "tests/support/Heard.h"

namespace vistrel {
namespace {

using support::ScriptedNetwork;

constexpr const char* kAddress = "http://ads.example/script.js";
constexpr const char* kModified = "Sat, 01 Jan 2011 12:00:00 GMT";
constexpr const char* kSentBack = "Sat, 01 Jan 2011 12:00:00";
const std::string kOldCopy = std::string(" old copy of ") + kSentBack;

/// Records what it is told. A test can react to an end or a failure.
class RecordingDelegate : public GADCachedFileDelegate {
public:
    void cachedFileDownloadDidEnd(GADCachedFile& file) override {
        heard("end");
        if (onEnd)
            onEnd(file);
    }
    void cachedFileDownloadDidFail(GADCachedFile& file, const NSError* error) override {
        heard(error ? "fail " + error->domain() + " " + std::to_string(error->code()) : "fail");
        if (onFail)
            onFail(file);
    }
    std::optional<NSError> cachedFileShouldRedirectToURL(GADCachedFile&,
                                                         const NSURL& url) override {
        heard("redirect " + url.absoluteString());
        return veto;
    }

    support::Heard heard;
    std::optional<NSError> veto;
    std::function<void(GADCachedFile&)> onEnd;
    std::function<void(GADCachedFile&)> onFail;
};

class GADCachedFileTest : public AdsTest {
protected:
    ~GADCachedFileTest() override {
        if (file_) {
            file_->setDelegate({});
            file_->cancel();
        }
    }

    GADCachedFile& file() {
        if (!file_)
            file_ = GADCachedFile::withDelegateURL(delegate_, *NSURL::URLWithString(kAddress));
        return *file_;
    }
    /// What the delegate has heard, the last status, and the copy with its date when that is the
    /// server's: "end: 200 text", "end: 304 text of Sat, 01 Jan …", "fail: 404 no copy".
    std::string outcome() {
        const std::string copy = file().content().value_or("not UTF-8");
        const auto date = file().fileModificationDate();
        return delegate_->heard.take() + ": " + std::to_string(file().httpStatusCode()) + " " +
               (file().hasContent() ? copy : "no copy") + (date == kSentBack ? " of " + *date : "");
    }
    std::string fetched() {
        file().validate();
        advance(10);
        return outcome();
    }
    /// A first copy, of which nothing is left in the records.
    void haveACopy() {
        network().at(kAddress).body("old copy").header("Last-Modified", kModified);
        fetched();
        network().forgetRequests();
    }
    std::string sentHeader(const std::string& field) {
        return ScriptedNetwork::header(network().requests().back(), field);
    }

    std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
    std::shared_ptr<GADCachedFile> file_;
};

TEST_F(GADCachedFileTest, FetchesAFileWithItsStatusAndHeaders) {
    GADNetworkUtilities::setUserAgentString("Library/4.1");
    network().at(kAddress).body("var a = 1;").header("X-Afma-Refresh-Rate", "30");
    EXPECT_EQ(file().content(), std::nullopt);
    EXPECT_EQ(file().fileModificationDate(), std::nullopt);
    file().validate();
    EXPECT_EQ(outcome(), ": 0 no copy") << "nothing is reported before validate() returns";
    advance(10);
    EXPECT_EQ(outcome(), "end: 200 var a = 1;");
    EXPECT_THAT(file().httpHeaders(), Contains(::testing::Pair("X-Afma-Refresh-Rate", "30")));
    EXPECT_EQ(file().httpDestinationURL().absoluteString(), kAddress);
    ASSERT_EQ(network().requests().size(), 1U);
    EXPECT_TRUE(network().requests().front().ignoresCache);
    EXPECT_EQ(network().requests().front().cookies, host::CookieUse::SendAndStore);
    EXPECT_EQ(sentHeader("If-Modified-Since"), "");
    EXPECT_EQ(sentHeader("User-Agent"), "Library/4.1");
    EXPECT_THAT(file().description(),
                ::testing::MatchesRegex("<GADCachedFile: 0x[0-9a-f]+> HTTP code: 200\n"
                                        "\turl: http://ads.example/script.js\n"
                                        "\tfile: /var/mobile/Library/Caches/ads.example/.*"));
}

TEST_F(GADCachedFileTest, TheCopyIsInItsHostsFolderAndNamedByAStableHash) {
    // Published values of the hash.
    EXPECT_EQ(gadStableHash(""), 0x811c9dc5U);
    EXPECT_EQ(gadStableHash("foobar"), 0xbf9cf968U);
    EXPECT_EQ(file().filePath(), "/var/mobile/Library/Caches/ads.example/c07a6190");
    const std::pair<const char*, const char*> cases[] = {
        {"http://../x", "%2e%2e"},
        {"http://./x", "%2e"},
        {"http://%2e%2e/x", "%252e%252e"},
        {"http://a%2Fb/x", "a%252Fb"},
        {"file:///etc/passwd", "%"},
        {"about:blank", "%"},
        {"http://..a/x", "..a"},
        {"http://[::1]:8080/x", "::1"},
        {"http://user@h.example:80/x", "h.example"},
        {"http://$&'/x", "%24%26%27"},
    };
    for (const auto& [address, folder] : cases) {
        if (const auto url = NSURL::URLWithString(address)) {
            const std::string path = gadCachedFilePath(*url);
            EXPECT_EQ(path.substr(0, path.rfind('/')),
                      std::string(kGADCachesDirectory) + "/" + folder)
                << address;
        }
    }
    const auto longHost = NSURL::URLWithString("http://" + std::string(300, 'a') + "/x");
    EXPECT_THAT(gadCachedFilePath(*longHost),
                ::testing::MatchesRegex("/var/mobile/Library/Caches/%[0-9a-f]+/[0-9a-f]+"));
}

TEST_F(GADCachedFileTest, ASecondValidateDuringAFetchChangesNothing) {
    network().at(kAddress).body("a").after(1);
    file().validate();
    advance(0.5);
    file().validateWithCacheBuster();
    EXPECT_EQ(fetched(), "end: 200 a");
    EXPECT_EQ(network().requests().size(), 1U);
    EXPECT_EQ(fetched(), "end: 200 a");
    EXPECT_EQ(network().requests().size(), 2U);
}

TEST_F(GADCachedFileTest, ACopyIsFoundByItsAddressAndRevalidatedByTheServersDate) {
    haveACopy();
    EXPECT_EQ(files().info(file().filePath()).value().modificationTime, 1293883200);
    network().at(kAddress).status(304);
    EXPECT_EQ(fetched(), "end: 304" + kOldCopy);
    EXPECT_EQ(sentHeader("If-Modified-Since"), kSentBack);
    const auto contentOf = [](const std::string& address) {
        return GADCachedFile::withDelegateURL({}, *NSURL::URLWithString(address))->content();
    };
    EXPECT_EQ(contentOf(kAddress), "old copy");
    EXPECT_EQ(contentOf(std::string(kAddress) + "?"), std::nullopt);
}

TEST_F(GADCachedFileTest, DatesAreReadWithOrWithoutTheirZoneAndNonsenseIsIgnored) {
    const std::pair<std::string, std::vector<const char*>> cases[] = {
        {std::string("end: 200 new of ") + kSentBack,
         {"Sat, 01 Jan 2011 12:00:00 GMT", "Sat, 1 Jan 2011 12:00:00 GMT", kSentBack}},
        {"end: 200 new",
         {"Sat, 01 Jan 2011 12:00:00 UTC", "Saturday, 01-Jan-11 12:00:00 GMT",
          "Sat Jan  1 12:00:00 2011"}},
        {"end: 200 new",
         {"Sat, 31 Feb 2011 12:00:00 GMT", "Sat, 01 Jan 2011 24:00:00 GMT", "GMT", ""}},
    };
    for (const auto& [outcome, dates] : cases) {
        for (const char* date : dates) {
            network().at(kAddress).body("new").header("Last-Modified", date);
            file().invalidate();
            EXPECT_EQ(fetched(), outcome) << date;
        }
    }
    for (const char* date :
         {"Sat, 01 Jan 0000 00:00:00", "Thu, 01 Jan 1970 00:00:00", "Tue, 29 Feb 2000 23:59:59",
          "Wed, 31 Dec 1969 23:59:59", "Fri, 31 Dec 9999 23:59:59"}) {
        const auto seconds = GADHTTPDate::secondsWithString(date);
        ASSERT_TRUE(seconds) << date;
        EXPECT_EQ(GADHTTPDate::stringWithSeconds(*seconds), date);
        EXPECT_EQ(GADHTTPDate::secondsWithString(std::string("\t") + date + " "), seconds);
    }
    EXPECT_EQ(GADHTTPDate::stringWithSeconds(-0.5), "Wed, 31 Dec 1969 23:59:59");
    EXPECT_EQ(GADHTTPDate::stringWithSeconds(1e300), "Fri, 31 Dec 9999 23:59:59");
}

TEST_F(GADCachedFileTest, AnUnexpectedStatusKeepsTheOldCopy) {
    for (const int status : {404, 400, 503, 204, 206, 301}) {
        haveACopy();
        network().at(kAddress).status(status).body("an error page");
        EXPECT_EQ(fetched(), "fail: " + std::to_string(status) + kOldCopy);
        EXPECT_EQ(network().runningTransfers(), 0);
    }
}

TEST_F(GADCachedFileTest, AFetchThatFailsReportsItsErrorAndKeepsTheOldCopy) {
    using Answer = support::ScriptedAnswer;
    const std::string noSpace = "fail NSPOSIXErrorDomain " + std::to_string(ENOSPC) + ": 200";
    const std::pair<std::function<void(Answer&)>, std::string> cases[] = {
        {[](Answer& answer) { answer.failsAfter(5, host::TransferErrorKind::ConnectionLost, ""); },
         "fail NSURLErrorDomain -1005: 200"},
        {[](Answer& answer) { answer.announces(100); }, "fail NSURLErrorDomain -1005: 200"},
        {[this](Answer&) { files().failWritesFrom(1, ENOSPC); }, noSpace},
    };
    haveACopy();
    for (const auto& [fault, event] : cases) {
        fault(network().at(kAddress).body("a longer new copy"));
        EXPECT_EQ(fetched(), event + kOldCopy);
        files().clearFaults();
    }
    file().invalidate();
    files().makeReadOnly("/var");
    EXPECT_EQ(fetched(), "fail NSPOSIXErrorDomain " + std::to_string(EROFS) + ": 200 no copy");
}

TEST_F(GADCachedFileTest, ARedirectIsFollowedUnlessTheDelegateVetoesIt) {
    haveACopy();
    const std::string path = file().filePath();
    network().at(kAddress).redirectsTo("http://cdn.example/a").header("X-Mark", "redirect");
    network().at("http://cdn.example/a").body("moved");
    delegate_->veto = NSError("veto", 7, "not there");
    EXPECT_EQ(fetched(), "redirect http://cdn.example/a, fail veto 7: 200" + kOldCopy);
    EXPECT_THAT(network().requestedURLs(), ElementsAre(kAddress));
    EXPECT_EQ(file().httpDestinationURL().absoluteString(), "http://cdn.example/a");
    EXPECT_THAT(file().httpHeaders(), Contains(::testing::Pair("X-Mark", "redirect")));
    delegate_->veto.reset();
    EXPECT_EQ(fetched(), "redirect http://cdn.example/a, end: 200 moved");
    EXPECT_EQ(file().sourceURL().absoluteString(), kAddress);
    EXPECT_EQ(file().filePath(), path);
    network().at(kAddress).redirectsTo("tel:123"); // leaves the web
    EXPECT_EQ(fetched(), "redirect tel:123, fail NSURLErrorDomain -1002: 200 moved");
    delegate_->veto = NSError("veto", 7, "enough");
    EXPECT_EQ(fetched(), "redirect tel:123, fail veto 7: 200 moved");
}

TEST_F(GADCachedFileTest, TheCacheBusterPutsTheTimeIntoTheAddress) {
    const std::string busted = std::string(kAddress) + "?unique=321692800";
    // The seconds from the start of 2001 to 2011-03-13 07:06:40.
    loop().setWallClockAtStart(1'300'000'000.4 - loop().now());
    network().at(busted).body("fresh");
    file().validateWithCacheBuster();
    advance(10);
    EXPECT_EQ(outcome(), "end: 200 fresh");
    EXPECT_THAT(network().requestedURLs(), ElementsAre(busted));
    EXPECT_EQ(file().httpDestinationURL().absoluteString(), busted);
    EXPECT_EQ(file().filePath(), gadCachedFilePath(*NSURL::URLWithString(kAddress)));
}

TEST_F(GADCachedFileTest, CancelAndInvalidateStopAFetchSilentlyAndTheLatterDeletesTheCopy) {
    haveACopy();
    network().at(kAddress).body("new copy").after(1);
    for (const bool deletes : {false, true}) {
        file().validate();
        advance(0.5);
        EXPECT_EQ(network().runningTransfers(), 1);
        deletes ? file().invalidate() : file().cancel();
        EXPECT_EQ(network().runningTransfers(), 0);
        advance(10);
        EXPECT_EQ(outcome(), ": 200" + (deletes ? " no copy" : kOldCopy));
    }
    file().invalidate(); // a second time
    EXPECT_EQ(fetched(), "end: 200 new copy");
    EXPECT_EQ(sentHeader("If-Modified-Since"), "");
}

TEST_F(GADCachedFileTest, TextThatIsNotUTF8IsNotReturned) {
    network().at(kAddress).body("caf\xE9");
    EXPECT_EQ(fetched(), "end: 200 not UTF-8");
    network().at(kAddress).body("");
    EXPECT_EQ(fetched(), "end: 200 ");
}

TEST_F(GADCachedFileTest, TheDelegateMayFetchAgainFromAnEndOrAFailure) {
    network().at(kAddress).body("").header("Last-Modified", kModified);
    network().thenAt(kAddress).fails(host::TransferErrorKind::TimedOut, "slow");
    network().thenAt(kAddress).status(404);
    network().thenAt(kAddress).status(304);
    network().thenAt(kAddress).body("last");
    delegate_->onEnd = [this](GADCachedFile& ended) {
        if (network().requests().size() < 5)
            ended.validate();
    };
    delegate_->onFail = &GADCachedFile::validate;
    EXPECT_EQ(fetched(), "end, fail NSURLErrorDomain -1001, fail, end, end: 200 last");
}

TEST_F(GADCachedFileTest, TheDelegateMayReleaseTheFileInAnyCallback) {
    delegate_->onEnd = [this](GADCachedFile& done) {
        done.setDelegate({});
        done.invalidate();
        file_.reset();
    };
    delegate_->onFail = delegate_->onEnd;
    auto& answer = network().at(kAddress).body("a").header("Last-Modified", kModified);
    EXPECT_EQ(fetched(), "end: 0 no copy") << "a new object speaks";
    answer.status(304);
    EXPECT_EQ(fetched(), "end: 0 no copy");
    answer.status(500);
    EXPECT_EQ(fetched(), "fail: 0 no copy");
    answer.fails(host::TransferErrorKind::Other, "broken");
    EXPECT_EQ(fetched(), "fail NSURLErrorDomain -1: 0 no copy");
    delegate_->veto = NSError("veto", 7, "not there");
    network().at(kAddress).redirectsTo("http://h/");
    EXPECT_EQ(fetched(), "redirect http://h/, fail veto 7: 0 no copy");
}

TEST_F(GADCachedFileTest, ItFetchesWithoutADelegate) {
    file().setDelegate({});
    network().at(kAddress).redirectsTo("http://h/");
    network().at("http://h/").body("a");
    EXPECT_EQ(fetched(), ": 200 a");
    network().at("http://h/").status(404);
    EXPECT_EQ(fetched(), ": 404 a");
}

}
}
