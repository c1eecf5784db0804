#include "tests/demo/MediaFiles.h"
#include "tests/demo/WireClient.h"

#include <gmock/gmock.h>

namespace vistrel::demo {
namespace {
using testing::HasSubstr;
using testing::Not;

std::string cookieOf(const Reply& reply) {
    const std::string header = reply.header("Set-Cookie");
    return "Cookie: " + header.substr(0, header.find(';')) + "\r\n";
}

Reply askWith(const std::string& cookie, const std::string& address) {
    return ask(Query{.address = address, .headers = cookie});
}

TEST(MembersTest, TheMembersFilmNeedsTheLogin) {
    EXPECT_EQ(ask("/vip/members-only.mp4").status, 403);

    const Reply refused = ask(Query{.address = "/vip/login", .form = "user=demo&password=wrong"});
    EXPECT_EQ(refused.status, 303);
    EXPECT_EQ(refused.header("Set-Cookie"), "");

    const Reply login = ask(Query{.address = "/vip/login", .form = "user=demo&password=demo"});
    EXPECT_EQ(login.header("Location"), "/vip/");
    const std::string cookie = cookieOf(login);
    const Reply film = askWith(cookie, "/vip/members-only.mp4");
    EXPECT_EQ(film.status, 200);
    EXPECT_TRUE(film.body == mediaBytes("paper-boats.mp4"));

    askWith(cookie, "/vip/logout");
    EXPECT_EQ(askWith(cookie, "/vip/members-only.mp4").status, 403);
}

TEST(MembersTest, ARotatedSessionIsLostWhenAnOldTokenIsShownAgain) {
    const std::string first = cookieOf(ask("/rotate/"));
    const Reply second = askWith(first, "/rotate/");
    EXPECT_THAT(second.body, HasSubstr("Session kept"));
    EXPECT_EQ(askWith(cookieOf(second), "/rotate/film.mp4").status, 200);
    EXPECT_THAT(askWith(first, "/rotate/").body, HasSubstr("Session lost"));
    EXPECT_EQ(askWith(first, "/rotate/film.mp4").status, 403);
}

TEST(MembersTest, APostedFormAnswersWithTheFilmAndIsCounted) {
    const int before = std::stoi(ask("/counters/post").body);
    const Reply film = ask(Query{.address = "/vip/fetch", .form = "file=night-tram.m4v"});
    EXPECT_EQ(film.header("Content-Type"), "video/m4v");
    EXPECT_TRUE(film.body == mediaBytes("night-tram.m4v"));
    EXPECT_THAT(ask("/vip/fetch").header("Content-Type"), HasSubstr("text/html"));
    EXPECT_EQ(std::stoi(ask("/counters/post").body), before + 1);
}

TEST(MembersTest, VisitsAreCountedByAddress) {
    const int before = std::stoi(ask("/counters/hits?path=/tvshows/24.html").body);
    ask("/tvshows/24.html");
    ask("/tvshows/24.html?delay=0");
    EXPECT_EQ(std::stoi(ask("/counters/hits?path=/tvshows/24.html").body), before + 2);
}
}
}
