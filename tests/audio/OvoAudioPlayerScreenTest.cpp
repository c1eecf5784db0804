// The layout of the player's views, and the transitions of overlay and table.
#include "tests/audio/PlayerTest.h"

#include "audio/OvoAudioPlayerTableViewCell.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/UIImageView.h"

namespace vistrel {
namespace {

class OvoAudioPlayerScreenTest : public PlayerTest {
protected:
    /// What the container shows, from back to front: "cover table gradient".
    std::string container() {
        const auto& v = views();
        const std::map<std::shared_ptr<UIView>, std::string> names{
            {v.artworkView, "cover"},
            {v.songTableView, " table"},
            {v.reflectionView, " reflection"}};
        std::string text;
        for (const auto& child : v.containerView->subviews())
            text += names.at(child);
        const bool darkens = v.containerView->gradientLayers() == std::vector{v.gradientLayer};
        return text + (darkens ? " gradient" : "");
    }
    /// "60,2 195x12; 60,14 195x12" and so on, from back to front.
    static std::string framesIn(const UIView& view) {
        std::ostringstream text;
        for (const auto& child : view.subviews()) {
            const CGRect frame = child->frame();
            text << (text.tellp() > 0 ? "; " : "") << frame.minX() << ',' << frame.minY() << ' '
                 << frame.size.width << 'x' << frame.size.height;
        }
        return text.str();
    }
    static bool shows(const UIButton& button, const std::string& picture) {
        const auto expected = audioPlayerPicture(picture)->bitmap();
        const auto shown = button.currentImage()->bitmap();
        if (expected->width() != shown->width() || expected->height() != shown->height())
            return false;
        for (int y = 0; y < expected->height(); ++y)
            if (!std::equal(shown->row(y), shown->row(y) + shown->width(), expected->row(y)))
                return false;
        return true;
    }
};

TEST_F(OvoAudioPlayerScreenTest, TheViewsLieInTheirPlaces) {
    open(3, 1);
    showOverlay();
    const auto& v = views();
    EXPECT_EQ(framesIn(*player().view()),
              "0,0 320x44; 60,14 195x12; 60,2 195x12; 60,27 195x12; 0,44 320x416; 0,364 320x96; "
              "220,370 40x40; 60,370 40x40; 25,420 270x9; 140,370 40x40");
    EXPECT_EQ(framesIn(*v.containerView), "0,0 320x320; 0,320 320x96; 0,0 320x76");
    EXPECT_EQ(framesIn(*v.overlayView),
              "54,20 212x23; 128,2 64x21; 272,21 48x21; 0,21 48x21; 10,45 32x28; 280,45 32x28");
    EXPECT_EQ(v.playButton->frame(), CGRectMake(144, 370, 40, 40));
    EXPECT_EQ(v.songTableView->frame(), CGRectMake(0, 0, 320, 368));
    EXPECT_EQ(v.songTableView->contentInset(), (UIEdgeInsets{0, 0, 37, 0}));
    EXPECT_EQ(v.gradientLayer->frame, CGRectMake(0, 320, 320, 48));
    EXPECT_DOUBLE_EQ(v.reflectionView->alpha(), 0.65);
    EXPECT_EQ(v.reflectionView->image()->size(), (CGSize{320, 208}));
}

TEST_F(OvoAudioPlayerScreenTest, TheOverlayFadesInAndOutAndATapReversesTheFade) {
    open(1);
    EXPECT_FALSE(views().overlayView);
    expectSteps({{"button Cover", "0 tenths"},
                 {"wait 0.2", "3 tenths"}, // slow at first
                 {"wait 0.25", "10 tenths"},
                 {"button Cover; wait 0.2", "7 tenths"},
                 {"button Cover; wait 1", "10 tenths"}, // reversed
                 {"button Cover; wait 0.45", "gone"},
                 {"button Cover; wait 0.5; button Cover; wait 0.1; button Tracks; wait 1", "gone"},
                 {"button Tracks; wait 1; button Cover; wait 0.5", "10 tenths"}},
                [&] {
                    const auto& overlay = *views().overlayView;
                    const double alpha = overlay.presentationState().alpha;
                    return overlay.superview() ? std::to_string(std::lround(alpha * 10)) + " tenths"
                                               : "gone";
                });
}

TEST_F(OvoAudioPlayerScreenTest, FlippingSwapsCoverAndTableAndBack) {
    open(3);
    showOverlay();
    const auto cover = views().artworkView->currentImage();
    EXPECT_EQ(views().toggleButton->currentImage(), albumInfoPicture());
    tapButton("Tracks");
    EXPECT_EQ(container(), "cover table gradient");
    EXPECT_EQ(views().toggleButton->currentImage(), cover);
    EXPECT_TRUE(shows(*views().artworkView, "AudioPlayerTableBackground"));
    act("wait 1; button Next");
    EXPECT_TRUE(shows(*views().artworkView, "AudioPlayerTableBackground")) << "a refresh keeps it";

    tapButton("Tracks");
    EXPECT_EQ(container(), "cover reflection");
    EXPECT_EQ(views().toggleButton->currentImage(), albumInfoPicture());
    EXPECT_TRUE(shows(*views().artworkView, "AudioPlayerNoArtwork"));
    EXPECT_NE(views().reflectionView->image(), nullptr);
}

TEST_F(OvoAudioPlayerScreenTest, ModeButtonsShowTheirStates) {
    open(3);
    showOverlay();
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"AudioPlayerRepeatOff", "AudioPlayerShuffleOff", "off"},
        {"AudioPlayerRepeatOn", "AudioPlayerShuffleOn", "all"},
        {"AudioPlayerRepeatOneOn", "AudioPlayerShuffleOff", "one"},
        {"AudioPlayerRepeatOff", "AudioPlayerShuffleOn", "off"}};
    for (const auto& [repeat, shuffle, spoken] : rows) {
        EXPECT_TRUE(shows(*views().repeatButton, repeat)) << repeat;
        EXPECT_TRUE(shows(*views().shuffleButton, shuffle)) << repeat;
        EXPECT_EQ(views().repeatButton->accessibilityElement().value, spoken);
        tapButton("Repeat");
        tapButton("Shuffle");
    }
}

TEST_F(OvoAudioPlayerScreenTest, RowsShowNumberTitleAndLength) {
    setTags(1, 61.9);
    open(5, 1);
    player().showSongFiles();
    auto& table = *views().songTableView;
    table.layoutIfNeeded();
    const auto row = [&](int number) {
        const auto cell = std::dynamic_pointer_cast<OvoAudioPlayerTableViewCell>(
            table.cellForRowAtIndexPath({0, number}));
        return cell->number() + " " + cell->title() + " " + cell->duration() +
               (cell->isEven() ? " even" : "") + (cell->isSelectedIndex() ? " selected" : "");
    };
    EXPECT_EQ(row(0), "1. 0.mp3 0:00");
    EXPECT_EQ(row(1), "2. Title 1 1:01 even selected");
    EXPECT_EQ(table.rectForRowAtIndexPath({0, 2}), CGRectMake(0, 88, 320, 44));
    EXPECT_FALSE(*player().tableViewCanEditRowAtIndexPath(table, {0, 0}));

    table.selectRowAtIndexPath({0, 3}, false);
    player().tableViewDidSelectRowAtIndexPath(table, {0, 3});
    EXPECT_EQ(trackPlaying(), 3);
    advance(1);
    EXPECT_FALSE(table.indexPathForSelectedRow());
    tapButton("Next");
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(row(i).ends_with(" selected"), i == 4) << i;
}

TEST_F(OvoAudioPlayerScreenTest, TheGradientDarkensTheEndOfTheTable) {
    open(20);
    player().showSongFiles();
    advance(1);
    EXPECT_EQ(colors(*views().containerView, "30,355 200,366 160,200"), "black black mixed");
}

}
}
