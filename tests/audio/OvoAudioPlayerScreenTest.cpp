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
        return std::dynamic_pointer_cast<OvoAudioPlayerTableViewCell>(
            table.cellForRowAtIndexPath({0, number}));
    };
    ASSERT_TRUE(row(0) && row(1));
    EXPECT_EQ(row(0)->number(), "1.");
    EXPECT_EQ(row(0)->title(), "0.mp3");
    EXPECT_EQ(row(0)->duration(), "0:00");
    EXPECT_FALSE(row(0)->isEven());
    EXPECT_FALSE(row(0)->isSelectedIndex());
    EXPECT_EQ(row(1)->number(), "2.");
    EXPECT_EQ(row(1)->title(), "Title 1");
    EXPECT_EQ(row(1)->duration(), "1:01");
    EXPECT_TRUE(row(1)->isEven());
    EXPECT_TRUE(row(1)->isSelectedIndex());
    EXPECT_EQ(table.rectForRowAtIndexPath({0, 2}), CGRectMake(0, 88, 320, 44));
    EXPECT_FALSE(*player().tableViewCanEditRowAtIndexPath(table, {0, 0}));

    table.selectRowAtIndexPath({0, 3}, false);
    player().tableViewDidSelectRowAtIndexPath(table, {0, 3});
    EXPECT_EQ(trackPlaying(), 3);
    advance(1);
    EXPECT_FALSE(table.indexPathForSelectedRow());
    tap(*views().nextButton);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(row(i)->isSelectedIndex(), i == 4) << i;
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
