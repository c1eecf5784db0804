// The layout of the player's views, and the transitions of overlay and table.
#include "tests/audio/PlayerTest.h"

#include "audio/OvoAudioPlayerTableViewCell.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/UIImageView.h"

namespace vistrel {
namespace {

class OvoAudioPlayerScreenTest : public PlayerTest {
protected:
    std::vector<const UIView*> children(const UIView& view) {
        std::vector<const UIView*> result;
        for (const auto& child : view.subviews())
            result.push_back(child.get());
        return result;
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
    tap(*views().artworkView);
    const auto overlay = views().overlayView;
    const auto alpha = [&] {
        return overlay->superview() ? overlay->presentationState().alpha : -1;
    };
    EXPECT_LT(alpha(), 0.01);
    advance(0.2);
    EXPECT_GT(alpha(), 0.1);
    EXPECT_LT(alpha(), 0.5) << "slow at first";
    advance(0.25);
    EXPECT_DOUBLE_EQ(alpha(), 1);
    tap(*views().artworkView);
    advance(0.2);
    EXPECT_GT(alpha(), 0) << "fading out";
    tap(*views().artworkView);
    advance(1);
    EXPECT_DOUBLE_EQ(alpha(), 1) << "reversed";
    tap(*views().artworkView);
    advance(0.45);
    EXPECT_EQ(alpha(), -1) << "gone";
    showOverlay();
    tap(*views().artworkView);
    advance(0.1);
    player().showSongFiles();
    advance(1);
    EXPECT_EQ(alpha(), -1) << "removed by the flip";
    player().showSongFiles();
    advance(1);
    showOverlay();
    EXPECT_EQ(views().overlayView, overlay);
    EXPECT_DOUBLE_EQ(alpha(), 1);
}

TEST_F(OvoAudioPlayerScreenTest, FlippingSwapsCoverAndTableAndBack) {
    open(3);
    showOverlay();
    const auto cover = views().artworkView->currentImage();
    EXPECT_EQ(views().toggleButton->currentImage(), albumInfoPicture());
    tap(*views().toggleButton);
    const auto& v = views();
    EXPECT_THAT(children(*v.containerView),
                ElementsAre(v.artworkView.get(), v.songTableView.get()));
    EXPECT_THAT(v.containerView->gradientLayers(), ElementsAre(v.gradientLayer));
    EXPECT_EQ(v.toggleButton->currentImage(), cover);
    EXPECT_TRUE(shows(*v.artworkView, "AudioPlayerTableBackground"));
    advance(1);
    tap(*v.nextButton);
    EXPECT_TRUE(shows(*v.artworkView, "AudioPlayerTableBackground")) << "a refresh keeps it";

    tap(*v.toggleButton);
    EXPECT_THAT(children(*v.containerView),
                ElementsAre(v.artworkView.get(), v.reflectionView.get()));
    EXPECT_TRUE(v.containerView->gradientLayers().empty());
    EXPECT_EQ(v.toggleButton->currentImage(), albumInfoPicture());
    EXPECT_TRUE(shows(*v.artworkView, "AudioPlayerNoArtwork"));
    EXPECT_NE(v.reflectionView->image(), nullptr);
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
        tap(*views().repeatButton);
        tap(*views().shuffleButton);
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
    tap(*views().nextButton);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(row(i).ends_with(" selected"), i == 4) << i;
}

TEST_F(OvoAudioPlayerScreenTest, TheGradientDarkensTheEndOfTheTable) {
    open(20);
    player().showSongFiles();
    advance(1);
    const auto picture = renderViewToBitmap(*views().containerView, 1);
    EXPECT_EQ(picture->pixel(30, 355), 0xFF000000U);
    EXPECT_EQ(picture->pixel(200, 366), 0xFF000000U);
    EXPECT_NE(picture->pixel(160, 200), 0xFF000000U);
}

}
}
