#include "catalogue/MovieCatalogue.h"
#include "catalogue/TVShowCatalogue.h"
#include "demo/Text.h"
#include "settings/Settings.h"
#include "tests/demo/DemoSiteProcess.h"
#include "tests/demo/WireClient.h"

#include <gmock/gmock.h>
#include <map>
#include <span>
#include <sstream>

namespace vistrel::demo {
namespace {
using testing::AnyOf;
using testing::HasSubstr;

std::string titleOf(const Reply& reply) {
    const size_t start = reply.body.find("<title>") + 7;
    return reply.body.substr(start, reply.body.find("</title>") - start);
}

std::string firstFileLinkOf(const Reply& reply) {
    const size_t start = reply.body.find("/files/");
    return start == std::string::npos
               ? ""
               : reply.body.substr(start, reply.body.find('"', start) - start);
}

void expectPageOfTitleWithMedia(std::string_view address, std::string_view title) {
    SCOPED_TRACE(address);
    const Reply page = ask(std::string(address.substr(0, address.find('#'))));
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(titleOf(page), HasSubstr(escapedForHtml(title)));
    const std::string link = firstFileLinkOf(page);
    ASSERT_NE(link, "");
    EXPECT_THAT(
        ask(Query{.address = link, .headers = "Range: bytes=0-99\r\n"}).header("Content-Type"),
        AnyOf("video/mp4", "video/m4v", "audio/mpeg"));
}

TEST(PagesTest, EveryShowsAddressAnswersWithAPageOfItsTitleThatLeadsToMedia) {
    ASSERT_EQ(tvShowCatalogue().size(), 146U);
    for (const CatalogueRow& row : tvShowCatalogue())
        expectPageOfTitleWithMedia(row.path, row.title);
}

TEST(PagesTest, EveryMoviePagesAddressAnswersWithAPageOfItsTitleThatLeadsToMedia) {
    ASSERT_EQ(movieCatalogue().size(), 29U);
    for (const CatalogueRow& row : movieCatalogue())
        expectPageOfTitleWithMedia(row.path, row.title);
}

TEST(PagesTest, EveryPartnerSiteBearsItsNameAndHasMedia) {
    for (int number = 1; number <= 8; ++number)
        expectPageOfTitleWithMedia("/partner/" + std::to_string(number) + "/",
                                   kPartnerSites.at(number - 1).title.defaultValue);
    EXPECT_EQ(ask("/partner/9/").status, 404);
}

TEST(PagesTest, AnUnknownAddressIsNotFound) {
    for (const char* address :
         {"/tvshows/none.html", "/db/showthread.php?t=1", "/mdb/aa.html", "/media/none.mp4",
          "/files/none", "/attach/0", "/r/200/music/", "/nowhere"})
        EXPECT_EQ(ask(address).status, 404) << address;
}

TEST(PagesTest, EveryListedAddressAnswers) {
    DemoSiteProcess list({"--list"});
    std::istringstream lines(list.firstLine() + "\n" + list.restOfOutput());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const std::string address = line.substr(0, line.find_first_of("\t#"));
        const bool redirects = address.starts_with("/r/") && address != "/r/";
        const int expected = address == "/vip/members-only.mp4" ? 4 : redirects ? 3 : 2;
        EXPECT_EQ(ask(address).status / 100, expected) << address;
    }
    EXPECT_GT(count, 146 + 29 + 8);
}

TEST(PagesTest, ARedirectLeadsWhereItsAddressSays) {
    const std::map<std::string, std::pair<int, std::string>> redirects = {
        {"/r/301/media/harbour-at-dawn.mp4", {301, "/media/harbour-at-dawn.mp4"}},
        {"/r/307/r/302/music/", {307, "/r/302/music/"}},
        {"/r/302/db/showthread.php?p=1&q=2", {302, "/db/showthread.php?p=1&q=2"}},
        {"/r/loop", {302, "/r/loop"}},
        {"/r/file", {302, "file:///etc/passwd"}},
        {"/r/ftp", {302, "ftp://127.0.0.1/film.mp4"}},
    };
    for (const auto& [address, expected] : redirects) {
        const Reply reply = ask(address);
        EXPECT_EQ(reply.status, expected.first) << address;
        EXPECT_EQ(reply.header("Location"), expected.second) << address;
    }
}
}
}
