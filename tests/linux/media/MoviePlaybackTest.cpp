// Films in the real player: timing of pictures, seeking, ends and errors.
#include "tests/linux/media/PlaybackFixture.h"
#include "tests/linux/web/TestPageServer.h"

namespace vistrel {
namespace {

class MoviePlaybackTest : public PlaybackFixture {
protected:
    TestPageServer server_;
};

TEST_F(MoviePlaybackTest, AFilmPlaysInRealTimeAndEndsOnce) {
    auto playback = movie("colours.mp4");
    ASSERT_TRUE(becomesReady(*playback));
    EXPECT_NEAR(playback->duration(), 3, 0.1);
    EXPECT_EQ(playback->framesShown(), 0u);
    EXPECT_FALSE(playback->isPlaying());
    const auto start = Clock::now();
    EXPECT_TRUE(playback->play());
    ASSERT_TRUE(turnUntil([&] {
        colourShown(*playback);
        return client_.told.size() > 1;
    }));
    EXPECT_NEAR(secondsSince(start), 3, 0.5);
    // The film has seventy-five; a late main loop may skip some.
    EXPECT_GE(playback->framesShown(), 60u);
    EXPECT_LE(playback->framesShown(), 76u);
    turnFor(0.3);
    EXPECT_THAT(client_.told, ElementsAre("ready", "ended"));
    EXPECT_FALSE(playback->isPlaying());
    EXPECT_NEAR(playback->currentTime(), 3, 0.1);
}

TEST_F(MoviePlaybackTest, FramesAreOnlyPreparedWhileTheyAreDrawn) {
    auto playback = movie("colours.mp4");
    playback->play();
    ASSERT_TRUE(framesPass(*playback, 3));
    const unsigned before = playback->framesShown();
    ASSERT_TRUE(passes(*playback, 1.5)) << "sound goes on";
    EXPECT_EQ(playback->framesShown(), before);
    EXPECT_EQ(strongest(colourShown(*playback)), Green) << "the newest frame, not an old one";
    EXPECT_TRUE(framesPass(*playback, before + 3));
}

TEST_F(MoviePlaybackTest, OddFilmsShowTheirFirstPictureUpright) {
    const std::tuple<const char*, int, int> films[] = {
        {"turned.mp4", 48, 64}, {"anamorphic.mp4", 128, 48}, {"422.mp4", 64, 48},
        {"10bit.mp4", 64, 48},  {"odd.mkv", 63, 47},         {"silent.mp4", 64, 48},
    };
    for (const auto& [name, width, height] : films) {
        client_ = {};
        auto playback = movie(name);
        ASSERT_TRUE(becomesReady(*playback)) << name;
        EXPECT_EQ(playback->pictureWidth(), width) << name;
        EXPECT_EQ(playback->pictureHeight(), height) << name;
        EXPECT_EQ(strongest(colourShown(*playback)), Red) << name;
        EXPECT_TRUE(playsToItsEnd(*playback)) << name;
    }
}

TEST_F(MoviePlaybackTest, AFilmMayChangeItsSize) {
    auto playback = movie("changing.ts");
    ASSERT_TRUE(becomesReady(*playback));
    EXPECT_EQ(playback->pictureWidth(), 64);
    playback->play();
    ASSERT_TRUE(shows(*playback, Green));
    EXPECT_EQ(playback->pictureWidth(), 32);
    EXPECT_EQ(playback->pictureHeight(), 64);
    EXPECT_TRUE(hears("ended"));
}

TEST_F(MoviePlaybackTest, APictureStaysUntilTheNextOneHoweverLate) {
    auto playback = movie("gap.mp4");
    playback->play();
    for (const auto& [second, colour] : {std::pair{1.5, Red}, {2.3, Blue}}) {
        ASSERT_TRUE(turnUntil([&, until = second] {
            colourShown(*playback);
            return playback->currentTime() > until;
        }));
        EXPECT_EQ(strongest(colourShown(*playback)), colour) << "after " << second;
    }
}

TEST_F(MoviePlaybackTest, AnHourWithItsIndexAtTheEndCanBeSought) {
    server_.serve(
        "/hour.mp4",
        {.type = "video/mp4", .body = sample("hour.mp4"), .headers = {{"Accept-Ranges", "bytes"}}});
    for (const std::string& url : {std::string("hour.mp4"), server_.url("/hour.mp4")}) {
        client_ = {};
        auto playback = movie(url);
        ASSERT_TRUE(becomesReady(*playback)) << url;
        ASSERT_TRUE(turnUntil([&] { return playback->duration() > 0; })) << url;
        EXPECT_NEAR(playback->duration(), 3600, 1);
        for (const auto& [second, colour] : {std::pair{3500.0, Blue}, {60.0, Red}}) {
            playback->setCurrentTime(second);
            EXPECT_TRUE(shows(*playback, colour)) << url << " at " << second;
            EXPECT_NEAR(playback->currentTime(), second, 1);
        }
    }
}

TEST_F(MoviePlaybackTest, WithoutRangesAFilmPlaysOnWhereItIs) {
    server_.serveFilm("/film.mp4", {.refusesRanges = true});
    auto playback = movie(server_.url("/film.mp4"));
    ASSERT_TRUE(starts(*playback));
    playback->setCurrentTime(2.8);
    EXPECT_LT(playback->currentTime(), 1.5);
    ASSERT_TRUE(hears("ended"));
    EXPECT_THAT(client_.told, ElementsAre("ready", "ended"));
    EXPECT_EQ(server_.seen("/film.mp4").size(), 1U);
}

TEST_F(MoviePlaybackTest, SeekingWhilePausedShowsThePictureOfThatMoment) {
    auto playback = movie("colours.mp4");
    ASSERT_TRUE(becomesReady(*playback));
    for (const auto& [second, colour] :
         {std::pair{2.1, Blue}, {0.1, Red}, {1.02, Green}, {0.95, Red}}) {
        playback->setCurrentTime(second);
        EXPECT_NEAR(playback->currentTime(), second, 0.05);
        EXPECT_TRUE(shows(*playback, colour, 3)) << "at " << second;
        turnFor(0.3);
        EXPECT_NEAR(playback->currentTime(), second, 0.05);
    }
}

TEST_F(MoviePlaybackTest, WhileDraggedTheNearestKeyPictureIsHeldAndThenTheExactOneShown) {
    auto playback = movie("onekey.mp4");
    ASSERT_TRUE(becomesReady(*playback));
    playback->setCurrentTime(1.5);
    playback->play();
    ASSERT_TRUE(shows(*playback, Green));
    for (const double second : {2.0, 2.99, 2.2, 2.9})
        playback->scrubTo(second);
    EXPECT_TRUE(shows(*playback, Red)) << "the only key picture";
    turnFor(0.5);
    EXPECT_DOUBLE_EQ(playback->currentTime(), 2.9);
    EXPECT_EQ(strongest(colourShown(*playback)), Red) << "held";
    EXPECT_TRUE(playback->isPlaying()) << "as soon as it is let go";
    playback->scrubTo(2.0);
    playback->setCurrentTime(2.4);
    EXPECT_TRUE(shows(*playback, Blue));
    EXPECT_NEAR(playback->currentTime(), 2.5, 0.15);
    EXPECT_TRUE(hears("ended"));
    EXPECT_THAT(client_.told, ElementsAre("ready", "ended"));
}

TEST_F(MoviePlaybackTest, AnythingButAFilmFailsOnceAndCannotBePlayed) {
    server_.servePage("/page", "<html>no film</html>");
    for (const std::string& url : {std::string("text.mp4"), std::string("missing.mp4"),
                                   server_.url("/page"), server_.url("/gone")}) {
        client_ = {};
        auto playback = movie(url);
        playback->prepare();
        EXPECT_TRUE(hears("failed")) << url;
        turnFor(0.2);
        EXPECT_THAT(client_.told, ElementsAre("failed")) << url;
        EXPECT_FALSE(playback->play()) << url;
    }
}

TEST_F(MoviePlaybackTest, AFilmBehindALoginIsSentItsOwnSecretsOnly) {
    server_.serveFilm("/members/film.mp4", {.login = "me:sesame"});
    const std::string url = server_.url("/members/film.mp4");
    jar_.set(url, "session=open; Path=/members; HttpOnly");
    jar_.set(url, "member=7; Path=/members");
    jar_.set(url, "other=no; Path=/elsewhere");
    credentials_[url] = {"me", "sesame"};
    auto playback = movie(url);
    playback->play();
    ASSERT_TRUE(framesPass(*playback, 5));
    EXPECT_THAT(server_.seen("/members/film.mp4").at(0).cookie,
                testing::AnyOf("session=open; member=7", "member=7; session=open"))
        << "one field";
}

TEST_F(MoviePlaybackTest, EachAddressOfARedirectIsSentItsOwnSecretsOnly) {
    TestPageServer elsewhere;
    const std::string film = server_.url("/film.mp4");
    const std::string start = elsewhere.url("/start.mp4");
    redirects_[start] = film;
    const struct {
        const char* cookieAtStart;
        const char* loginAtStart;
        const char* cookieOfFilm;
        const char* loginOfFilm;
    } roads[] = {{"", "", "", ""},
                 {"secret=1", "", "", ""},
                 {"", "me:first", "", ""},
                 {"secret=1", "me:first", "film=2", "me:second"}};
    for (const auto& road : roads) {
        SCOPED_TRACE(std::string(road.cookieAtStart) + " " + road.loginAtStart);
        server_.serveFilm("/film.mp4", {.login = road.loginOfFilm});
        elsewhere.redirect("/start.mp4", film, {.login = road.loginAtStart});
        credentials_.clear();
        jar_.clear();
        for (const auto& [url, cookie, login] :
             {std::tuple{start, road.cookieAtStart, road.loginAtStart},
              std::tuple{film, road.cookieOfFilm, road.loginOfFilm}}) {
            if (*cookie)
                jar_.set(url, std::string(cookie) + "; Path=" + url.substr(url.rfind('/')));
            if (*login)
                credentials_[url] = {"me", std::string(login).substr(3)};
        }
        auto playback = movie(start);
        playback->play();
        ASSERT_TRUE(framesPass(*playback, 5));
        EXPECT_EQ(elsewhere.seen("/start.mp4").back().cookie, road.cookieAtStart);
        EXPECT_EQ(server_.seen("/film.mp4").back().cookie, road.cookieOfFilm);
        for (const auto& request : server_.seen("/film.mp4"))
            EXPECT_THAT(request.authorization, testing::AnyOf("", basicCredential("me:second")));
    }
}

TEST_F(MoviePlaybackTest, ARedirectWithoutATargetFails) {
    server_.redirect("/start.mp4", "/loop.mp4");
    const std::string start = server_.url("/start.mp4");
    jar_.set(start, "secret=1; Path=/start.mp4");
    for (const std::string& target : {std::string(), start}) {
        client_ = {};
        redirects_[start] = target;
        auto playback = movie(start);
        playback->play();
        ASSERT_TRUE(hears("failed")) << target;
        EXPECT_FALSE(playback->isPlaying());
    }
}

TEST_F(MoviePlaybackTest, PausedOrStoppedItPlaysOnFromThere) {
    auto playback = movie("colours.mp4");
    ASSERT_TRUE(starts(*playback));
    playback->pause();
    turnFor(0.2);
    const double paused = playback->currentTime();
    turnFor(0.4);
    EXPECT_DOUBLE_EQ(playback->currentTime(), paused);
    ASSERT_TRUE(starts(*playback));
    EXPECT_THAT(client_.told, ElementsAre("ready"));
    playback->stop(); // gives up the file
    const double stopped = playback->currentTime();
    EXPECT_GT(stopped, paused + 0.1);
    ASSERT_TRUE(starts(*playback));
    EXPECT_THAT(client_.told, ElementsAre("ready", "ready"));
    EXPECT_LT(playback->currentTime(), stopped + 1);
}

TEST_F(MoviePlaybackTest, APlayerMayBeDestroyedAtAnyTimeAndLeavesNoThread) {
    {
        auto warm = movie("colours.mp4");
        warm->play();
        turnFor(0.3);
    }
    turnFor(0.3);
    const int before = runningThreads();
    for (int i = 0; i < 10; ++i) {
        auto playback = movie("colours.mp4");
        playback->play();
        turnFor(i * 0.03);
        playback->setCurrentTime(1);
    }
    EXPECT_TRUE(turnUntil([&] { return runningThreads() <= before + 2; }, 5))
        << runningThreads() << " " << before;
}

}
}
