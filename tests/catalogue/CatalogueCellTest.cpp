#include "catalogue/MoviesTableViewCell.h"
#include "catalogue/TVShowsTableViewCell.h"
#include "platform/graphics/ImageFile.h"
#include "platform/graphics/UIImage.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

constexpr std::uint32_t kBlue = 0xff102040;
constexpr std::uint32_t kGreen = 0xff206030;

/// The smallest rectangle around the pixels that match, in pixels; the edges are inclusive.
struct Extent {
    int left = 999, top = 999, right = -1, bottom = -1;
    explicit operator bool() const { return right >= 0; }
};

template <typename Cell>
class CellTest : public support::ScreenTest {
protected:
    explicit CellTest(const CGRect& frame) { cell->setFrame(frame); }

    std::shared_ptr<Bitmap> content() { return renderViewToBitmap(*cell->contentView(), 1); }
    template <typename Matches>
    Extent extentOf(Matches matches) {
        Extent found;
        const auto picture = content();
        for (int y = 0; y < picture->height(); ++y)
            for (int x = 0; x < picture->width(); ++x)
                if (matches(picture->pixel(x, y)))
                    found = {std::min(found.left, x), std::min(found.top, y),
                             std::max(found.right, x), std::max(found.bottom, y)};
        return found;
    }

    std::shared_ptr<Cell> cell = std::make_shared<Cell>("Cell");
};

class TVShowsTableViewCellTest : public CellTest<TVShowsTableViewCell> {
protected:
    TVShowsTableViewCellTest()
        : CellTest(CGRectMake(0, 0, 265, 50)) {
        cell->setBackgroundImage(plainImage(250, 44, kBlue));
        cell->setSelectedBackgroundImage(plainImage(250, 44, kGreen));
    }
    static bool isText(std::uint32_t pixel) { return (pixel & 0xff) > 0x60; }
    static bool isBright(std::uint32_t pixel) { return (pixel & 0xff) > 0xf0; }
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
    cell->setBackgroundImage(plainImage(265, 50, kBlue));
    cell->setTvShowText("MMMM");
    const Extent shortTitle = extentOf(isText);
    EXPECT_GE(shortTitle.left, 12);
    EXPECT_LE(shortTitle.left, 16);
    EXPECT_GE(shortTitle.top, 9);
    EXPECT_GT(shortTitle.bottom, 20) << "the box's height does not cut the line";
    EXPECT_LT(shortTitle.right, 120);

    EXPECT_FALSE(extentOf(isBright)) << "faint";
    cell->setHighlighted(true, false);
    EXPECT_TRUE(extentOf(isBright));
    cell->setHighlighted(false, false);

    cell->setTvShowText("MMMM MMMM MMMM MMMM MMMM MMMM MMMM");
    const Extent longTitle = extentOf(isText);
    EXPECT_LT(longTitle.right, 232);
    EXPECT_GT(longTitle.right, 190);
    EXPECT_LE(longTitle.bottom, shortTitle.bottom + 1) << "one line";
    // The last columns have only dots, at the foot of the line.
    EXPECT_FALSE(anyPixel(
        *cell->contentView(),
        CGRectMake(longTitle.right - 3, shortTitle.top, 4, shortTitle.bottom - 4 - shortTitle.top),
        isText));
}

class MoviesTableViewCellTest : public CellTest<MoviesTableViewCell> {
protected:
    MoviesTableViewCellTest()
        : CellTest(CGRectMake(0, 0, 320, 160)) {}
    // Edges are half transparent; only the light colour has that much green.
    static bool isLight(std::uint32_t pixel) { return (pixel >> 8 & 0xff) > 0x30; }
    static bool isDark(std::uint32_t pixel) { return pixel == 0xff1a1a1a; }
};

TEST_F(MoviesTableViewCellTest, TheTopLineHasALightEdgeAboveAndTheBottomBlockOneBelow) {
    cell->setTopTextLabel("HHH");
    const Extent topLight = extentOf(isLight);
    const Extent topDark = extentOf(isDark);
    ASSERT_TRUE(topLight && topDark);
    EXPECT_LT(topLight.top, topDark.top);
    EXPECT_LT(topLight.bottom, topDark.bottom);
    EXPECT_GE(topDark.top, 55);
    EXPECT_NEAR(topDark.left - 75, 250 - topDark.right, 3) << "centred";

    cell->setTopTextLabel("");
    EXPECT_FALSE(extentOf(isDark));
    cell->setBottomTextLabel("HHH");
    const Extent bottomLight = extentOf(isLight);
    const Extent bottomDark = extentOf(isDark);
    EXPECT_GT(bottomLight.bottom, bottomDark.bottom);
    EXPECT_GE(bottomLight.top, bottomDark.top);
    EXPECT_EQ(bottomDark.top - topDark.top, 80 - 55);
}

TEST_F(MoviesTableViewCellTest, LongTopTextIsCutAndLongBottomTextWraps) {
    cell->setTopTextLabel("HHHH HHHH HHHH HHHH HHHH");
    const Extent top = extentOf(isDark);
    EXPECT_LT(top.right, 250);
    EXPECT_LT(top.bottom - top.top, 20) << "one line";
    EXPECT_TRUE(top);
    cell->setTopTextLabel("");
    cell->setBottomTextLabel("HHHH HHHH HHHH HH");
    const Extent bottom = extentOf(isDark);
    EXPECT_GE(bottom.left, 75);
    EXPECT_LT(bottom.right, 250);
    EXPECT_GT(bottom.bottom - bottom.top, 25) << "two lines";
    EXPECT_NEAR(bottom.left - 75, 250 - bottom.right, 4) << "centred";
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
    EXPECT_TRUE(extentOf(isDark));
}

}
}
