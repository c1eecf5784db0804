#include "catalogue/MovieCatalogue.h"
#include "catalogue/TVShowCatalogue.h"
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <vector>

namespace vistrel {
namespace {

using testing::ElementsAre;

struct NumberedRow {
    std::size_t number;
    std::string_view title;
    std::string_view path;
};

constexpr NumberedRow kKnownShows[] = {
    {1, "24", "/tvshows/24.html"},
    {2, "30 Rock", "/tvshows/30r.html"},
    {3, "The A-Team", "/tvshows/a-t.html"},
    {4, "American Dad", "/tvshows/adad.html"},
    {5, "Aqua Teen Hunger Force", "/tvshows/athf.html"},
    {6, "Angry Beavers", "/tvshows/ab.html"},
    {7, "Arrested Development", "/tvshows/ArrestedDevelopment.html"},
    {8, "Avatar: The Last Airbender", "/tvshows/boondocks.html"},
    {10, "Better Off Ted", "/tvshows/boondocks.html"},
    {14, "The Boondocks", "/tvshows/boondocks.html"},
    {19, "CatDog", "/db/showthread.php?p=801&posted=1#post801"},
    {30, "Community", "/db/showthread.php?p=981&posted=1#post981"},
    {36, "Deadwood", "/tvshows/deadw1.html"},
    {49, "Family Guy", "/tvshows/freestream.html"},
    {83, "The League", "/db/showthread.php?p=972#post972"},
    {99, "Planet Earth", "/db/showthread.php?p=957#post957"},
    {107, "Salute Your Shorts", "/db/showthread.php?p=852&posted=1#post852"},
    {129, "Tale From the Crypt", "/tvshows/tftc.html"},
    {133, "Tosh.0", "/tvshows/tosh.0.html"},
    {136, "Two and a Half Men", "/tvshows/2.5men.html"},
    {144, "We Could Be Heroes", "/db/showthread.php?p=983&posted=1#post983"},
    {146, "WWE PPV Wrestling", "/tvshows/wwe.html"},
};

TEST(TVShowCatalogue, KnownShowsStandAtTheirNumbers) {
    const auto shows = tvShowCatalogue();
    ASSERT_EQ(shows.size(), 146U);
    for (const auto& known : kKnownShows) {
        EXPECT_EQ(shows[known.number - 1].title, known.title) << "row " << known.number;
        EXPECT_EQ(shows[known.number - 1].path, known.path) << "row " << known.number;
    }
    EXPECT_EQ(shows[40].path, "/db/showthread.php?t=365");
    EXPECT_EQ(shows[78].path, "/db/showpost.php?p=732&postcount=2");
    EXPECT_GT(shows[129].title, shows[128].title);
}

TEST(TVShowCatalogue, EveryShowHasATitleAndAnAddressThatNeedsNoEscaping) {
    for (const auto& show : tvShowCatalogue()) {
        EXPECT_FALSE(show.title.empty());
        EXPECT_TRUE(show.path.starts_with("/tvshows/") || show.path.starts_with("/db/"))
            << show.path;
        EXPECT_EQ(show.path.find_first_not_of(
                      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/.-?=&#"),
                  std::string_view::npos)
            << show.path;
        if (show.path.starts_with("/tvshows/")) {
            EXPECT_TRUE(show.path.ends_with(".html")) << show.path;
            EXPECT_GT(show.path.size(), std::string_view("/tvshows/.html").size()) << show.title;
        }
    }
}

TEST(TVShowCatalogue, EightShowsLeadToTheForum) {
    std::vector<std::size_t> numbers;
    for (std::size_t row = 0; row < tvShowCatalogue().size(); ++row) {
        if (tvShowCatalogue()[row].path.starts_with("/db/")) {
            numbers.push_back(row + 1);
        }
    }
    EXPECT_THAT(numbers, ElementsAre(19, 30, 41, 79, 83, 99, 107, 144));
}

TEST(TVShowCatalogue, NoTitleStandsTwiceAndOnlyTwoPagesAreShared) {
    std::map<std::string_view, std::vector<std::size_t>> rowsOfPath;
    std::map<std::string_view, int> uses;
    for (std::size_t row = 0; row < tvShowCatalogue().size(); ++row) {
        rowsOfPath[tvShowCatalogue()[row].path].push_back(row + 1);
        ++uses[tvShowCatalogue()[row].title];
    }
    for (const auto& [title, count] : uses) {
        EXPECT_EQ(count, 1) << title;
    }
    std::vector<std::vector<std::size_t>> shared;
    for (const auto& [path, rows] : rowsOfPath) {
        if (rows.size() > 1) {
            shared.push_back(rows);
        }
    }
    EXPECT_THAT(shared, ElementsAre(ElementsAre(8, 10, 14), ElementsAre(129, 130)));
}

TEST(MovieCatalogue, TwoCollectionsStandBeforeOnePageForEachInitial) {
    const auto movies = movieCatalogue();
    ASSERT_EQ(movies.size(), 29U);
    EXPECT_EQ(movies[0].title, "In Theatres");
    EXPECT_EQ(movies[0].path, "/mdb/inthe.html");
    EXPECT_EQ(movies[1].title, "Free Stream");
    EXPECT_EQ(movies[1].path, "/mdb/fsotd.html");
    EXPECT_EQ(movies[2].title, "\"#\" Movies");
    EXPECT_EQ(movies[2].path, "/mdb/number.html");
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const auto& row = movies[3 + static_cast<std::size_t>(letter - 'A')];
        EXPECT_EQ(row.title, std::string("\"") + letter + "\" Movies");
        EXPECT_EQ(row.path, std::string("/mdb/") + static_cast<char>(letter - 'A' + 'a') + ".html");
    }
}

} // namespace
} // namespace vistrel
