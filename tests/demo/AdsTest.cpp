#include "tests/demo/DemoSiteProcess.h"
#include "tests/demo/WireClient.h"

#include <gmock/gmock.h>

namespace vistrel::demo {
namespace {
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

TEST(AdsTest, TheScriptIsSentAgainOnlyWhenItIsNewerThanTheCopy) {
    const struct {
        const char* since;
        int status;
    } cases[] = {
        {"", 200},
        {"If-Modified-Since: Mon, 03 Jan 2011 08:59:59\r\n", 200},
        {"If-Modified-Since: Mon, 03 Jan 2011 09:00:00\r\n", 304},
        {"If-Modified-Since: Mon, 03 Jan 2011 09:00:00 GMT\r\n", 304},
        {"If-Modified-Since: Wed, 25 Nov 2026 09:00:00 \r\n", 304},
        {"If-Modified-Since: yesterday\r\n", 200},
    };
    for (const auto& [since, status] : cases) {
        for (const char* address : {"/afma/sdk-core-v40.js", "/safa/sdk-core-v40.js"}) {
            const Reply reply = ask(Query{.address = address, .headers = since});
            EXPECT_EQ(reply.status, status) << address << since;
            EXPECT_EQ(reply.body.find("function AFMA_buildAdURL(") == std::string::npos,
                      status == 304);
            EXPECT_EQ(reply.header("Last-Modified"), "Mon, 03 Jan 2011 09:00:00 GMT");
        }
    }
    EXPECT_THAT(ask("/afma/sdk-core-v40.js").body, Not(HasSubstr("kind=search")));
    EXPECT_THAT(ask("/safa/sdk-core-v40.js").body, HasSubstr("kind=search"));
}

TEST(AdsTest, EachAdAnswersAsItsRowSays) {
    const struct {
        const char* query;
        int status;
        const char* header; ///< a name and a part of its value
        const char* value;
        const char* body; ///< a part of it
    } cases[] = {
        {"link", 200, "Content-Type", "text/html", "href=\"http://127.0.0.1/ads/land/film/\""},
        {"clicks", 200, "X-Afma-Click-Tracking-Urls",
         "http://127.0.0.1/ads/click/clicks http://127.0.0.1/ads/click/clicks/partner",
         "http://127.0.0.1/ads/app/music"},
        {"clicks", 200, "X-Afma-Tracking-Urls",
         "http://127.0.0.1/ads/track/clicks http://127.0.0.1/ads/track/clicks/partner", "Slow"},
        {"redirected", 302, "X-Afma-Tracking-Urls", "/ads/track/redirected", "Moved"},
        {"redirected", 302, "Location", "/ads/serve?ad=shop", "Moved"},
        {"rejected", 400, "Content-Type", "text/html", "unit"},
        {"unavailable", 503, "Content-Type", "text/html", "Closed"},
        {"cut-off", 302, "Location", "truncate=300", "Moved"},
        {"refresh-30", 200, "X-Afma-Refresh-Rate", "30", "Kettle"},
        {"portrait", 200, "X-Afma-Orientation", "portrait", "Film"},
        {"patience&format=interstitial_mb", 200, "X-Afma-Interstitial-Timeout", "2.9", "poster"},
        {"sandboxed-frame", 200, "Content-Type", "text/html", "sandbox=\"allow-scripts\""},
        {"a149d3f2c8b7e61&preqs=1", 200, "X-Afma-Refresh-Rate", "60", "Harbour Film Week"},
        {"a149d3f2c8b7e61&preqs=2", 200, "X-Afma-Tracking-Urls", "/ads/track/music", "Slow Train"},
        {"a149d3f2c8b7e61&preqs=6&format=interstitial_mb", 200, "X-Afma-Tracking-Urls",
         "/ads/track/shop-screen", "class=\"poster\""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.query);
        const Reply reply = ask("/ads/serve?ad=" + std::string(row.query));
        EXPECT_EQ(reply.status, row.status);
        EXPECT_THAT(reply.header(row.header), HasSubstr(row.value));
        EXPECT_THAT(reply.body, HasSubstr(row.body));
    }
    const Reply blank = ask("/ads/serve?ad=blank");
    EXPECT_EQ(blank.body.find_first_not_of(" \n\t\r"), std::string::npos);
    EXPECT_NE(blank.body, "");
}

TEST(AdsTest, EveryPingIsLoggedInOrderWithWhatItStandsFor) {
    EXPECT_EQ(ask("/ads/track/some-ad").status, 200);
    EXPECT_EQ(ask("/ads/click/some-ad/partner").header("Location"), "/ads/clicked/some-ad/partner");
    EXPECT_EQ(ask("/ads/clicked/some-ad/partner?x=1").status, 200);
    ask("/music/");
    const std::string log = ask("/ads/log").body;
    EXPECT_THAT(log, ContainsRegex("s  ping: shown  GET /ads/track/some-ad\n"
                                   ".* s  ping: touched  GET /ads/click/some-ad/partner\n"
                                   ".* s  ping: touched, redirected  GET "
                                   "/ads/clicked/some-ad/partner.x=1\n"));
    EXPECT_THAT(log, Not(HasSubstr("/music/")));
}
}
}
