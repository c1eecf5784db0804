#include "audio/OvoAudioPlayerTableViewCell.h"

#include "platform/graphics/Bitmap.h"
#include "platform/uikit/ImageRenderer.h"
#include "tests/support/HostTest.h"

namespace vistrel {
namespace {

class OvoAudioPlayerTableViewCellTest : public support::HostTest {
protected:
    OvoAudioPlayerTableViewCellTest() {
        cell = std::make_shared<OvoAudioPlayerTableViewCell>("Cell");
        cell->setFrame(CGRectMake(0, 88, 320, 44));
    }
    std::shared_ptr<Bitmap> content() { return renderViewToBitmap(*cell->contentView(), 1); }
    /// Whether a light pixel lies between the columns.
    static bool textBetween(const Bitmap& picture, int from, int to) {
        for (int x = from; x < to; ++x)
            for (int y = 8; y < 40; ++y)
                if ((picture.pixel(x, y) & 0xffffff) > 0x404040)
                    return true;
        return false;
    }

    std::shared_ptr<OvoAudioPlayerTableViewCell> cell;
};

struct State {
    const char* name;
    bool even, selected, highlighted;
    std::uint32_t background;
    bool lines;
    std::uint32_t mark; ///< at the middle of the triangle
};

// Premultiplied: black at 0.25; the mark (0.09, 0.274, 0.873).
constexpr State kStates[] = {
    {"first row", false, false, false, 0, true, 0},
    {"second row", true, false, false, 0x40000000, true, 0x40000000},
    {"first row, playing", false, true, false, 0, true, 0xff1746df},
    {"second row, playing", true, true, false, 0x40000000, true, 0xff1746df},
    {"second row, touched", true, false, true, 0, false, 0},
    {"second row, playing, touched", true, true, true, 0, false, 0xffffffff},
};

TEST_F(OvoAudioPlayerTableViewCellTest, BandLinesAndMarkFollowTheRowsState) {
    for (const State& state : kStates) {
        SCOPED_TRACE(state.name);
        cell->setIsEven(state.even);
        cell->setIsSelectedIndex(state.selected);
        cell->setHighlighted(state.highlighted, false);
        const auto picture = content();
        EXPECT_EQ(picture->pixel(20, 4), state.background);
        EXPECT_EQ(picture->pixel(63, 4) != state.background, state.lines);
        EXPECT_EQ(picture->pixel(260, 40) != state.background, state.lines);
        EXPECT_EQ(picture->pixel(61, 4), state.background);
        EXPECT_EQ(picture->pixel(66, 4), state.background);
        EXPECT_EQ(picture->pixel(47, 22), state.mark);
        EXPECT_EQ(picture->pixel(50, 16), state.background) << "above the triangle";
        EXPECT_EQ(picture->pixel(54, 18), state.background) << "it narrows to the right";
        EXPECT_EQ(picture->pixel(50, 28), state.background);
    }
}

TEST_F(OvoAudioPlayerTableViewCellTest, TextsStayInTheirColumnsAndLongOnesAreTruncated) {
    cell->setTitle("MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM");
    auto picture = content();
    EXPECT_FALSE(textBetween(*picture, 0, 62));
    EXPECT_FALSE(textBetween(*picture, 262, 320));
    EXPECT_TRUE(textBetween(*picture, 200, 260));
    cell->setTitle("");
    cell->setNumber("12.");
    picture = content();
    EXPECT_TRUE(textBetween(*picture, 5, 40));
    EXPECT_FALSE(textBetween(*picture, 41, 320));
    cell->setNumber("");
    cell->setDuration("3:07");
    picture = content();
    EXPECT_FALSE(textBetween(*picture, 0, 270));
    EXPECT_TRUE(textBetween(*picture, 305, 315)) << "aligned to the right";
    EXPECT_FALSE(textBetween(*picture, 315, 320));
}

TEST_F(OvoAudioPlayerTableViewCellTest, TheBandAloneRequestsNoRedrawTheMarkDoes) {
    content();
    cell->setIsEven(true);
    EXPECT_EQ(content()->pixel(20, 4), 0U);
    cell->setIsSelectedIndex(true);
    EXPECT_EQ(content()->pixel(20, 4), 0x40000000U);
    cell->setIsEven(false);
    cell->setTitle("x");
    EXPECT_EQ(content()->pixel(20, 4), 0U);
}

}
}
