#include "catalogue/TVShowCatalogue.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(TVShowCatalogue, TitlesAreUniqueAndAddressesNeedNoEscaping) {
    std::map<std::string_view, std::vector<std::size_t>> rowsOfPath;
    std::map<std::string_view, int> uses;
    std::vector<std::size_t> inForum;
    std::size_t number = 0;
    for (const auto& [title, path] : tvShowCatalogue()) {
        rowsOfPath[path].push_back(++number);
        EXPECT_FALSE(title.empty());
        EXPECT_EQ(++uses[title], 1) << title;
        EXPECT_EQ(path.find_first_not_of(
                      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/.-?=&#"),
                  std::string_view::npos)
            << path;
        if (path.starts_with("/db/"))
            inForum.push_back(number);
        else
            EXPECT_TRUE(path.starts_with("/tvshows/") && path.ends_with(".html")) << path;
    }
    EXPECT_EQ(number, 146U);
    EXPECT_THAT(inForum, ElementsAre(19, 30, 41, 79, 83, 99, 107, 144));
    std::erase_if(rowsOfPath, [](const auto& entry) { return entry.second.size() == 1; });
    EXPECT_THAT(rowsOfPath,
                ElementsAre(testing::Pair("/tvshows/boondocks.html", ElementsAre(8, 10, 14)),
                            testing::Pair("/tvshows/tftc.html", ElementsAre(129, 130))));
}

}
}
