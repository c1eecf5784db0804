#include "platform/graphics/CGContext.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/PixelPool.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

int redOf(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 16 & 0xFF);
}

/// A picture that a function draws.
template <typename Drawing>
std::shared_ptr<Bitmap> drawn(CGSize size, Drawing drawing, double scale = 1) {
    auto bitmap = std::make_shared<Bitmap>(static_cast<int>(size.width * scale),
                                           static_cast<int>(size.height * scale));
    CGContext context(bitmap, scale);
    drawing(context);
    return bitmap;
}

/// A letter for each pixel, a blank after each row: clear ".", Red, White, half transparent red and
/// white, Pink.
std::string lettersOf(const Bitmap& picture) {
    const std::map<std::uint32_t, char> letters = {{0, '.'},          {kRed, 'R'},
                                                   {kWhite, 'W'},     {0x80800000, 'r'},
                                                   {0x80808080, 'w'}, {0xFFFF8080, 'P'}};
    std::string text;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            text += letters.contains(picture.pixel(x, y)) ? letters.at(picture.pixel(x, y)) : '?';
        text += ' ';
    }
    return text;
}

TEST(CGContextTest, UnitsArePointsFromTheTopLeft) {
    const auto picture = drawn(
        {4, 2},
        [](CGContext& context) {
            context.setFillColor(UIColor::redColor());
            context.fillRect(CGRectMake(1, 0, 2, 1));
        },
        2);
    EXPECT_EQ(lettersOf(*picture), "..RRRR.. ..RRRR.. ........ ........ ");
}

TEST(CGContextTest, AClearFillReplacesWhatIsThere) {
    const auto picture = drawn({2, 2}, [](CGContext& context) {
        context.setFillColor(UIColor::redColor());
        context.fillRect(CGRectMake(0, 0, 2, 2));
        context.setFillColor(UIColor::clearColor());
        context.fillRect(CGRectMake(0, 0, 1, 2));
        context.setFillColor(UIColor::whiteColor().colorWithAlphaComponent(0.5F));
        context.fillRect(CGRectMake(0, 1, 2, 1));
    });
    EXPECT_EQ(lettersOf(*picture), ".R wP ") << "a translucent one is blended";
}

TEST(CGContextTest, SavedStateComesBackWhole) {
    const auto picture = drawn({2, 2}, [](CGContext& context) {
        context.setFillColor(UIColor::redColor());
        context.saveGState();
        context.setFillColor(UIColor::whiteColor());
        context.setAlpha(0);
        context.translate(100, 0);
        context.clipToRect(CGRectMake(0, 0, 1, 1));
        context.restoreGState();
        context.restoreGState(); // once too often, as is the next
        context.endTransparencyLayer();
        context.fillRect(CGRectMake(0, 0, 2, 1));
    });
    EXPECT_EQ(lettersOf(*picture), "RR .. ");
}

TEST(CGContextTest, ALayerIsFadedAsOne) {
    const auto picture = drawn({2, 1}, [](CGContext& context) {
        context.beginTransparencyLayer(0.5);
        context.setFillColor(UIColor::redColor());
        context.fillRect(CGRectMake(0, 0, 2, 1));
        context.setFillColor(UIColor::whiteColor());
        context.fillRect(CGRectMake(0, 0, 1, 1));
        context.endTransparencyLayer();
    });
    EXPECT_EQ(lettersOf(*picture), "wr ") << "white at half, no red under it";
}

TEST(CGContextTest, GradientsRunFromStartToEnd) {
    const CGGradient even = {{UIColor::blackColor(), UIColor::redColor()}, {}};
    const CGGradient early = {{UIColor::blackColor(), UIColor::redColor()}, {0, 0.5}};
    const auto picture = drawn({3, 20}, [&](CGContext& context) {
        context.saveGState();
        context.clipToRect(CGRectMake(0, 0, 1, 20));
        context.drawLinearGradient(even, {0, 0}, {0, 20});
        context.restoreGState();
        context.clipToRect(CGRectMake(1, 0, 1, 20));
        context.drawLinearGradient(early, {0, 0}, {0, 20});
    });
    EXPECT_LT(redOf(picture->pixel(0, 0)), 16);
    EXPECT_NEAR(redOf(picture->pixel(0, 10)), 134, 8);
    EXPECT_GT(redOf(picture->pixel(0, 19)), 240);
    EXPECT_GT(redOf(picture->pixel(1, 11)), 250);
    EXPECT_EQ(picture->pixel(2, 10), 0U) << "outside the clip";
}

TEST(CGContextTest, APartOfAPictureDoesNotBleed) {
    Bitmap strip(3, 1);
    strip.row(0)[0] = kWhite;
    strip.row(0)[1] = kRed;
    strip.row(0)[2] = kWhite;
    const auto picture = drawn({10, 1}, [&](CGContext& context) {
        context.drawBitmapPart(strip, CGRectMake(1, 0, 1, 1), CGRectMake(0, 0, 10, 1));
    });
    EXPECT_EQ(lettersOf(*picture), "RRRRRRRRRR ");
}

TEST(CGContextTest, DrawingFunctionsUseTheContextOnTop) {
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    CGContextFillRect(UIGraphicsGetCurrentContext(), CGRectMake(0, 0, 1, 1));
    UIColor::redColor().set();
    const auto picture = drawn({1, 1}, [](CGContext& context) {
        UIGraphicsPushContext(context);
        UIColor::redColor().set();
        drawn({1, 1}, [](CGContext& inner) {
            UIGraphicsPushContext(inner);
            UIColor::whiteColor().set();
            UIGraphicsPopContext();
        });
        CGContextFillRect(UIGraphicsGetCurrentContext(), CGRectMake(0, 0, 1, 1));
        UIGraphicsPopContext();
    });
    EXPECT_EQ(lettersOf(*picture), "R ");
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
}

TEST(BitmapTest, OpacityIsFoundInThePixelsAndDrawingIsANewGeneration) {
    const auto bitmap = std::make_shared<Bitmap>(3, 2);
    for (int y = 0; y < 2; ++y)
        std::fill_n(bitmap->row(y), 3, kRed);
    bitmap->findOpacity();
    EXPECT_TRUE(bitmap->isOpaque());
    bitmap->row(1)[2] = 0xFEFE0000;
    bitmap->findOpacity();
    EXPECT_FALSE(bitmap->isOpaque());
    const auto before = bitmap->generation();
    { CGContext context(bitmap, 1); }
    EXPECT_GT(bitmap->generation(), before);
}

TEST(PixelPoolTest, MemoryOfOneSizeIsUsedAgainAndCleared) {
    PixelPool pool(1000 * sizeof(std::uint32_t));
    auto* first = pool.take(600);
    first[17] = kRed;
    pool.giveBack(first, 600);
    EXPECT_EQ(pool.bytesKept(), 2400U);
    auto* other = pool.take(601);
    EXPECT_NE(other, first);
    auto* again = pool.take(600);
    EXPECT_EQ(again, first);
    EXPECT_EQ(again[17], 0U);
    pool.giveBack(again, 600);
    pool.giveBack(other, 601);
    EXPECT_EQ(pool.bytesKept(), 2400U) << "beyond the limit nothing is kept";
}

TEST(CGAffineTransformTest, TransformsComposeAndInvert) {
    const auto turn = CGAffineTransformMakeRotation(M_PI / 2);
    EXPECT_EQ(turn.apply(CGPoint{1, 0}), (CGPoint{0, 1})) << "clockwise, as y grows downward";
    const auto both = CGAffineTransformMakeTranslation(10, 0).concat(turn);
    EXPECT_EQ(both.apply(CGPoint{1, 0}), (CGPoint{0, 11})) << "first moved, then turned";
    const auto back = both.inverted().apply(both.apply(CGPoint{3, 4}));
    EXPECT_NEAR(back.x, 3, 1e-12);
    EXPECT_NEAR(back.y, 4, 1e-12);
    EXPECT_TRUE(CGAffineTransformMakeScale(0, 1).inverted().isIdentity());
    EXPECT_EQ(turn.apply(CGRectMake(0, 0, 4, 2)), CGRectMake(-2, 0, 2, 4));
    EXPECT_EQ(CGAffineTransformMakeScale(-1, 2).apply(CGRectMake(1, 2, 3, 4)),
              CGRectMake(-4, 4, 3, 8));
    EXPECT_EQ(CGAffineTransformMakeScale(2, 3)
                  .concat(CGAffineTransformMakeTranslation(5, 7))
                  .apply(CGRectMake(1, 2, 3, 4)),
              CGRectMake(7, 13, 6, 12));
}

TEST(CGGeometryTest, AnIntersectionIsTheCommonPartOrEmpty) {
    const auto a = CGRectMake(0, 0, 10, 10);
    EXPECT_EQ(CGRectIntersection(a, CGRectMake(5, 6, 10, 10)), CGRectMake(5, 6, 5, 4));
    EXPECT_EQ(CGRectIntersection(a, CGRectMake(10, 0, 5, 5)), CGRect{});
}

}
}
