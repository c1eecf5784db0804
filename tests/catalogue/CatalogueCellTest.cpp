#include "catalogue/ABTableViewCellOpaqueView.h"
#include "catalogue/ABTableViewCellView.h"
#include "catalogue/MoviesTableViewCell.h"
#include "catalogue/TVShowsTableViewCell.h"
#include "platform/graphics/ImageFile.h"
#include "platform/graphics/UIImage.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

constexpr std::uint32_t kBlue = 0xff102040;
constexpr std::uint32_t kGreen = 0xff206030;

/// The smallest rectangle around the pixels that match, as left, top, right, bottom (inclusive).
struct Extent {
    int left, top, right, bottom;
    bool operator==(const Extent&) const = default;
};

template <typename Matches>
std::optional<Extent> extentOf(const Bitmap& bitmap, Matches matches) {
    std::optional<Extent> found;
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x) {
            if (!matches(bitmap.pixel(x, y)))
                continue;
            if (!found)
                found = Extent{x, y, x, y};
            *found = {std::min(found->left, x), std::min(found->top, y), std::max(found->right, x),
                      std::max(found->bottom, y)};
        }
    }
    return found;
}

class CatalogueCellTest : public support::ScreenTest {
protected:
    static std::shared_ptr<Bitmap> paint(UIView& view) { return renderViewToBitmap(view, 1); }
};

class TVShowsTableViewCellTest : public CatalogueCellTest {
protected:
    TVShowsTableViewCellTest() {
        cell = std::make_shared<TVShowsTableViewCell>("Cell");
        cell->setFrame(CGRectMake(0, 0, 265, 50));
        cell->setBackgroundImage(plainImage(250, 44, kBlue));
        cell->setSelectedBackgroundImage(plainImage(250, 44, kGreen));
    }
    std::shared_ptr<Bitmap> content() { return paint(*cell->contentView()); }

    std::shared_ptr<TVShowsTableViewCell> cell;
};

TEST_F(TVShowsTableViewCellTest, ThePictureIsAtTheCornerOverWhiteOrOverNothingWhenHighlighted) {
    for (const bool hasPicture : {true, false}) {
        if (!hasPicture) {
            cell->setBackgroundImage(nullptr);
            cell->setSelectedBackgroundImage(nullptr);
        }
        for (const bool highlighted : {false, true}) {
            const std::uint32_t around = highlighted ? 0 : 0xffffffff;
            const std::uint32_t inside = highlighted ? kGreen : kBlue;
            cell->setHighlighted(highlighted, false);
            const auto picture = content();
            EXPECT_EQ(picture->pixel(0, 0), hasPicture ? inside : around);
            EXPECT_EQ(picture->pixel(249, 43), hasPicture ? inside : around);
            EXPECT_EQ(picture->pixel(250, 10), around);
            EXPECT_EQ(picture->pixel(10, 44), around);
        }
        cell->setHighlighted(false, false);
    }
}

TEST_F(TVShowsTableViewCellTest, ATitleKeepsToItsBoxAndEndsWithAnEllipsisWhenTooLong) {
    const auto isText = [](std::uint32_t pixel) {
        return (pixel & 0xff) > 0x60;
    };
    cell->setBackgroundImage(plainImage(265, 50, kBlue));
    cell->setTvShowText("MMMM");
    const auto shortTitle = extentOf(*content(), isText);
    ASSERT_TRUE(shortTitle);
    EXPECT_GE(shortTitle->left, 12);
    EXPECT_LE(shortTitle->left, 16);
    EXPECT_GE(shortTitle->top, 9);
    EXPECT_GT(shortTitle->bottom, 20) << "the box's height does not cut the line";
    EXPECT_LT(shortTitle->right, 120);

    const auto isBright = [](std::uint32_t pixel) {
        return (pixel & 0xff) > 0xf0;
    };
    EXPECT_FALSE(extentOf(*content(), isBright)) << "faint";
    cell->setHighlighted(true, false);
    EXPECT_TRUE(extentOf(*content(), isBright));
    cell->setHighlighted(false, false);

    cell->setTvShowText("MMMM MMMM MMMM MMMM MMMM MMMM MMMM");
    const auto longTitle = extentOf(*content(), isText);
    EXPECT_LT(longTitle->right, 232);
    EXPECT_GT(longTitle->right, 190);
    EXPECT_LE(longTitle->bottom, shortTitle->bottom + 1) << "one line";
    // The last columns have only dots, at the foot of the line.
    EXPECT_FALSE(anyPixel(*cell->contentView(),
                          CGRectMake(longTitle->right - 3, shortTitle->top, 4,
                                     shortTitle->bottom - 4 - shortTitle->top),
                          isText));
}

class MoviesTableViewCellTest : public CatalogueCellTest {
protected:
    MoviesTableViewCellTest() {
        cell = std::make_shared<MoviesTableViewCell>("Cell");
        cell->setFrame(CGRectMake(0, 0, 320, 160));
    }
    std::shared_ptr<Bitmap> content() { return paint(*cell->contentView()); }
    // Edges are half transparent; only the light colour has that much green.
    static bool isLight(std::uint32_t pixel) { return (pixel >> 8 & 0xff) > 0x30; }
    static bool isDark(std::uint32_t pixel) { return pixel == 0xff1a1a1a; }

    std::shared_ptr<MoviesTableViewCell> cell;
};

TEST_F(MoviesTableViewCellTest, TheTopLineHasALightEdgeAboveAndTheBottomBlockOneBelow) {
    cell->setTopTextLabel("HHH");
    const auto topLight = extentOf(*content(), isLight);
    const auto topDark = extentOf(*content(), isDark);
    ASSERT_TRUE(topLight && topDark);
    EXPECT_LT(topLight->top, topDark->top);
    EXPECT_LT(topLight->bottom, topDark->bottom);
    EXPECT_GE(topDark->top, 55);
    EXPECT_NEAR(topDark->left - 75, 250 - topDark->right, 3) << "centred";

    cell->setTopTextLabel("");
    EXPECT_FALSE(extentOf(*content(), isDark));
    cell->setBottomTextLabel("HHH");
    const auto bottomLight = extentOf(*content(), isLight);
    const auto bottomDark = extentOf(*content(), isDark);
    ASSERT_TRUE(bottomLight && bottomDark);
    EXPECT_GT(bottomLight->bottom, bottomDark->bottom);
    EXPECT_GE(bottomLight->top, bottomDark->top);
    EXPECT_EQ(bottomDark->top - topDark->top, 80 - 55);
}

TEST_F(MoviesTableViewCellTest, LongTopTextIsCutAndLongBottomTextWraps) {
    cell->setTopTextLabel("HHHH HHHH HHHH HHHH HHHH");
    const auto top = extentOf(*content(), isDark);
    EXPECT_LT(top->right, 250);
    EXPECT_LT(top->bottom - top->top, 20) << "one line";
    cell->setTopTextLabel("");
    cell->setBottomTextLabel("HHHH HHHH HHHH HH");
    const auto bottom = extentOf(*content(), isDark);
    EXPECT_GE(bottom->left, 75);
    EXPECT_LT(bottom->right, 250);
    EXPECT_GT(bottom->bottom - bottom->top, 25) << "two lines";
    EXPECT_NEAR(bottom->left - 75, 250 - bottom->right, 4) << "centred";
}

TEST_F(MoviesTableViewCellTest, TheCardIsDrawnAtTheCornerUnderTheTexts) {
    const auto card = plainImage(300, 150, kGreen);
    deterministicHost().host.resourcePath = testing::TempDir();
    ASSERT_TRUE(
        ImageFile::writePNG(*card->bitmap(), testing::TempDir() + "MoviesTableViewCell.png"));
    cell->setTopTextLabel("HHH");
    const auto picture = content();
    EXPECT_EQ(picture->pixel(0, 0), kGreen);
    EXPECT_EQ(picture->pixel(299, 149), kGreen);
    EXPECT_EQ(picture->pixel(300, 0), 0U);
    EXPECT_TRUE(extentOf(*picture, isDark));
}

}
}
