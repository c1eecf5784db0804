#include "platform/graphics/CGContext.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/PixelPool.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

constexpr std::uint32_t kClear = 0;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

int alphaOf(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 24);
}
int redOf(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 16 & 0xFF);
}
int blueOf(std::uint32_t pixel) {
    return static_cast<int>(pixel & 0xFF);
}

/// A picture of 20 x 20 points drawn by a function.
template <typename Drawing>
std::shared_ptr<Bitmap> drawn(Drawing drawing, double scale = 1) {
    const int side = static_cast<int>(20 * scale);
    auto bitmap = std::make_shared<Bitmap>(side, side);
    CGContext context(bitmap, scale);
    drawing(context);
    return bitmap;
}

TEST(CGContextTest, UnitsArePointsFromTheTopLeft) {
    const auto picture = drawn(
        [](CGContext& context) {
            context.setFillColor(UIColor::redColor());
            context.fillRect(CGRectMake(5, 2, 10, 4));
        },
        2);
    EXPECT_EQ(picture->pixel(10, 4), kRed);
    EXPECT_EQ(picture->pixel(29, 11), kRed);
    EXPECT_EQ(picture->pixel(9, 4), kClear);
    EXPECT_EQ(picture->pixel(10, 12), kClear);
}

TEST(CGContextTest, AClearFillReplacesWhatIsThere) {
    const auto picture = drawn([](CGContext& context) {
        context.setFillColor(UIColor::redColor());
        context.fillRect(CGRectMake(0, 0, 20, 20));
        context.setFillColor(UIColor::clearColor());
        context.fillRect(CGRectMake(0, 0, 10, 20));
        context.setFillColor(UIColor::whiteColor().colorWithAlphaComponent(0.5F));
        context.fillRect(CGRectMake(0, 10, 20, 10));
    });
    EXPECT_EQ(picture->pixel(5, 5), kClear);
    EXPECT_EQ(picture->pixel(15, 5), kRed);
    EXPECT_NEAR(alphaOf(picture->pixel(5, 15)), 128, 1);
    EXPECT_NEAR(blueOf(picture->pixel(15, 15)), 128, 1) << "blended, not replaced";
}

TEST(CGContextTest, SavedStateComesBackWhole) {
    const auto picture = drawn([](CGContext& context) {
        context.setFillColor(UIColor::redColor());
        context.saveGState();
        context.setFillColor(UIColor::whiteColor());
        context.setAlpha(0);
        context.translate(100, 0);
        context.clipToRect(CGRectMake(0, 0, 1, 1));
        context.restoreGState();
        context.restoreGState(); // once too often, as is the next
        context.endTransparencyLayer();
        context.fillRect(CGRectMake(0, 0, 10, 10));
    });
    EXPECT_EQ(picture->pixel(5, 5), kRed);
    EXPECT_EQ(picture->pixel(10, 10), kClear);
}

TEST(CGContextTest, ALayerIsFadedAsOne) {
    const auto picture = drawn([](CGContext& context) {
        context.beginTransparencyLayer(0.5);
        context.setFillColor(UIColor::redColor());
        context.fillRect(CGRectMake(0, 0, 20, 20));
        context.setFillColor(UIColor::whiteColor());
        context.fillRect(CGRectMake(0, 0, 10, 20));
        context.endTransparencyLayer();
    });
    EXPECT_NEAR(alphaOf(picture->pixel(5, 5)), 128, 1);
    EXPECT_NEAR(blueOf(picture->pixel(5, 5)), 128, 1) << "white at half, no red under it";
}

TEST(CGContextTest, GradientsRunFromStartToEnd) {
    const CGGradient even = {{UIColor::blackColor(), UIColor::redColor()}, {}};
    const CGGradient early = {{UIColor::blackColor(), UIColor::redColor()}, {0, 0.5}};
    const auto picture = drawn([&](CGContext& context) {
        context.clipToRect(CGRectMake(0, 0, 10, 20));
        context.drawLinearGradient(even, {0, 0}, {0, 20});
    });
    EXPECT_LT(redOf(picture->pixel(5, 0)), 16);
    EXPECT_NEAR(redOf(picture->pixel(5, 10)), 134, 8);
    EXPECT_GT(redOf(picture->pixel(5, 19)), 240);
    EXPECT_EQ(picture->pixel(15, 10), kClear) << "outside the clip";
    const auto located = drawn([&](CGContext& context) {
        context.drawLinearGradient(early, {0, 0}, {0, 20});
    });
    EXPECT_GT(redOf(located->pixel(5, 11)), 250);
}

TEST(CGContextTest, APartOfAPictureDoesNotBleed) {
    Bitmap strip(3, 1);
    strip.row(0)[0] = kWhite;
    strip.row(0)[1] = kRed;
    strip.row(0)[2] = kWhite;
    const auto picture = drawn([&](CGContext& context) {
        context.drawBitmapPart(strip, CGRectMake(1, 0, 1, 1), CGRectMake(0, 0, 20, 20));
    });
    for (const int x : {0, 1, 10, 18, 19}) {
        EXPECT_EQ(picture->pixel(x, 10), kRed) << x;
    }
}

TEST(CGContextTest, DrawingFunctionsUseTheContextOnTop) {
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    CGContextFillRect(UIGraphicsGetCurrentContext(), CGRectMake(0, 0, 1, 1));
    UIColor::redColor().set();
    const auto picture = drawn([](CGContext& context) {
        UIGraphicsPushContext(context);
        UIColor::redColor().set();
        drawn([](CGContext& inner) {
            UIGraphicsPushContext(inner);
            UIColor::whiteColor().set();
            UIGraphicsPopContext();
        });
        CGContextFillRect(UIGraphicsGetCurrentContext(), CGRectMake(0, 0, 20, 20));
        UIGraphicsPopContext();
    });
    EXPECT_EQ(picture->pixel(5, 5), kRed);
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
