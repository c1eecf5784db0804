#include "platform/graphics/UIStringDrawing.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/ValidText.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

const UIFont font = UIFont::systemFontOfSize(17);

/// What drawing a text in red leaves, in points.
struct Ink {
    double left = HUGE_VAL;
    double right = 0;
    double bottom = 0;
    int pixels = 0;
};

Ink inkOf(const std::string& text, const CGRect& rect, UILineBreakMode mode,
          UITextAlignment alignment = UITextAlignment::Left) {
    auto bitmap = std::make_shared<Bitmap>(800, 400);
    {
        CGContext context(bitmap, 2);
        UIGraphicsPushContext(context);
        UIColor::redColor().set();
        drawInRectWithFont(text, rect, font, mode, alignment);
        UIGraphicsPopContext();
    }
    Ink ink;
    for (int y = 0; y < bitmap->height(); ++y) {
        for (int x = 0; x < bitmap->width(); ++x) {
            if ((bitmap->pixel(x, y) >> 16 & 0xFF) > 32)
                ink = {std::min(ink.left, x / 2.0), std::max(ink.right, (x + 1) / 2.0),
                       std::max(ink.bottom, (y + 1) / 2.0), ink.pixels + 1};
        }
    }
    return ink;
}

TEST(UIFontTest, LineHeightGrowsWithTheSizeAndBoldIsWider) {
    EXPECT_NEAR(UIFont::systemFontOfSize(34).lineHeight(), 2 * font.lineHeight(), 0.1);
    EXPECT_GT(font.ascender(), 2 * font.descender());
    EXPECT_GT(sizeWithFont("Downloads", UIFont::boldSystemFontOfSize(17)).width,
              sizeWithFont("Downloads", font).width);
}

TEST(UIStringDrawingTest, SizesAreWholePointsAndAddUp) {
    EXPECT_EQ(sizeWithFont("", font), CGSize{});
    const auto one = sizeWithFont("m", font);
    EXPECT_EQ(one.width, std::ceil(one.width));
    EXPECT_NEAR(sizeWithFont(std::string(100, 'm'), font).width / 100, one.width, 1);
    EXPECT_EQ(sizeWithFont("first\nsecond and longer", font), sizeWithFont("first", font))
        << "one line is the first one";
}

TEST(UIStringDrawingTest, WrappedSizesHoldWholeLines) {
    const std::string text = "one two three four five six seven eight";
    const double line = font.lineHeight();
    const auto free = sizeWithFontConstrainedToSize(text, font, {100, 1000});
    EXPECT_LE(free.width, 100);
    EXPECT_GT(free.height, 3 * line);
    const auto two = sizeWithFontConstrainedToSize(text, font, {100, 2 * line + 5});
    EXPECT_EQ(two.height, std::ceil(2 * line));
    const auto paragraphs = sizeWithFontConstrainedToSize("a\nb\nc", font, {100, 1000});
    EXPECT_EQ(paragraphs.height, std::ceil(3 * line));
    EXPECT_EQ(sizeWithFontConstrainedToSize("", font, {100, 100}), CGSize{});
}

TEST(UIStringDrawingTest, TheCaretGoesWithTheDirectionOfTheText) {
    const std::string hebrew = "שיר";
    const double width = sizeWithFont(hebrew, font).width;
    const std::tuple<std::string, std::size_t, double> cases[] = {
        {"Film", 0, 0},
        {"Film", 4, sizeWithFont("Film", font).width},
        {hebrew, 0, width},
        {hebrew, hebrew.size(), 0},
        {hebrew + " 2", hebrew.size(), sizeWithFont(" 2", font).width},
        {"a" + hebrew, 1, sizeWithFont("a", font).width},
        {"a\xE9z", 2, sizeWithFont("a\xE9", font).width}, // no text: its bytes in their order
    };
    for (const auto& [line, offset, x] : cases)
        EXPECT_NEAR(caretPositionInLine(line, font, offset), x, 1.5) << line << " " << offset;
}

TEST(UIStringDrawingTest, TruncationCutsTextWhereItsReadingEnds) {
    // Of the text's end nothing shows; a gap of twice the width parts it from the start.
    const auto rect = CGRectMake(0, 0, 200, 20);
    std::string gap;
    for (int i = 0; i < 100; ++i)
        gap += "\u00A0";
    EXPECT_LT(inkOf("ab" + gap + "yz", rect, UILineBreakMode::TailTruncation).left, 5);
    const auto hebrew = inkOf("אב" + gap + "ג", rect, UILineBreakMode::TailTruncation);
    EXPECT_GT(hebrew.right, 195) << "the start is at the right";
    EXPECT_LT(hebrew.left, 30) << "the ellipsis at the left";
}

TEST(UIStringDrawingTest, TruncationKeepsTheLineInsideTheRectangle) {
    const std::string text = "A rather long title of a film that does not fit";
    const auto rect = CGRectMake(20, 30, 120, 5);
    for (const auto mode : {UILineBreakMode::TailTruncation, UILineBreakMode::HeadTruncation,
                            UILineBreakMode::MiddleTruncation}) {
        const auto ink = inkOf(text, rect, mode);
        EXPECT_GE(ink.left, 19);
        EXPECT_LE(ink.right, 141);
        EXPECT_GT(ink.right, 120) << "uses the room";
        EXPECT_LE(ink.bottom, 31 + font.lineHeight()) << "one line";
        EXPECT_GT(ink.bottom, 40) << "which the height does not cut";
    }
    EXPECT_LE(inkOf(text, rect, UILineBreakMode::Clip).right, 140);
}

TEST(UIStringDrawingTest, AlignmentPlacesEachLine) {
    const auto rect = CGRectMake(50, 10, 200, 30);
    const auto left = inkOf("Help", rect, UILineBreakMode::Clip);
    const auto center = inkOf("Help", rect, UILineBreakMode::Clip, UITextAlignment::Center);
    const auto right = inkOf("Help", rect, UILineBreakMode::Clip, UITextAlignment::Right);
    EXPECT_NEAR(left.left, 51, 2);
    EXPECT_NEAR(center.left + center.right, 300, 4);
    EXPECT_NEAR(right.right, 249, 2);
    const auto lines = inkOf("Help\nHelp", rect, UILineBreakMode::WordWrap, UITextAlignment::Right);
    EXPECT_NEAR(lines.left, right.left, 1);
    EXPECT_GT(lines.pixels, right.pixels * 3 / 2);
}

TEST(UIStringDrawingTest, WrappingDrawsTheLinesThatBeginInside) {
    const double line = font.lineHeight();
    const auto two = inkOf("a\nb\nc", CGRectMake(0, 0, 100, line + 1), UILineBreakMode::WordWrap);
    EXPECT_GT(two.bottom, line + 5);
    EXPECT_LT(two.bottom, 2 * line + 1);
}

TEST(UIStringDrawingTest, FontsShrinkToFitButNotBelowTheMinimum) {
    const std::string text = "12:34:56";
    const double width = sizeWithFont(text, font).width;
    EXPECT_EQ(fontThatFits(text, font, width + 1, 8), font);
    const auto smaller = fontThatFits(text, font, width * 0.7, 8);
    EXPECT_LT(smaller.pointSize(), 17);
    EXPECT_LE(sizeWithFont(text, smaller).width, width * 0.7 + 1);
    EXPECT_EQ(fontThatFits(text, font, 1, 10).pointSize(), 10);
}

TEST(ValidTextTest, InvalidUTF8IsReplacedByteByByte) {
    const std::string mark = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"plain", "plain"},
        {"caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xAC", "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xAC"},
        {"\u0080\u0800\U00010000", "\u0080\u0800\U00010000"}, // the first of each length
        {"caf\xE9", "caf" + mark},
        {"\xC0\xAF", mark + mark},                       // a longer form than needed
        {"\xED\xA0\x80", mark + mark + mark},            // half of a pair
        {"\xF4\x90\x80\x80", mark + mark + mark + mark}, // beyond the last character
        {"end \xE2\x82", "end " + mark + mark},          // cut short
    };
    for (const auto& [text, valid] : cases)
        EXPECT_EQ(validText(text), valid);
}

TEST(UIStringDrawingTest, InvalidAndEmptyTextIsDrawnSafely) {
    EXPECT_GT(inkOf("caf\xE9 \xFF\xFE ok", CGRectMake(0, 0, 300, 30), UILineBreakMode::Clip).pixels,
              0);
    EXPECT_EQ(inkOf("", CGRectMake(0, 0, 300, 30), UILineBreakMode::WordWrap).pixels, 0);
    EXPECT_EQ(inkOf("text", CGRectMake(0, 0, 0, 30), UILineBreakMode::WordWrap).pixels, 0);
    drawInRectWithFont("no context", CGRectMake(0, 0, 10, 10), font);
}

}
}
